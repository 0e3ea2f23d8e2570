// Result<T>: a value, or the reason it could not be produced.
//
// The core never throws across a module boundary. Functions of our own that can
// fail return a Result; the reason is a short sentence meant for a person (the
// command line prints it as it is).
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace glyphmoor {

struct Failure {
    std::string reason;
};

inline Failure Fail(std::string reason) {
    return Failure{std::move(reason)};
}

template <typename T>
class [[nodiscard]] Result {
public:
    Result(T value) : m_state(std::move(value)) {}            // NOLINT(google-explicit-constructor)
    Result(Failure failure) : m_state(std::move(failure)) {}  // NOLINT(google-explicit-constructor)

    [[nodiscard]] bool ok() const { return std::holds_alternative<T>(m_state); }
    explicit operator bool() const { return ok(); }

    T& value() & { return std::get<T>(m_state); }
    const T& value() const& { return std::get<T>(m_state); }
    T&& value() && { return std::get<T>(std::move(m_state)); }
    T* operator->() { return &value(); }
    const T* operator->() const { return &value(); }
    T& operator*() & { return value(); }
    const T& operator*() const& { return value(); }

    [[nodiscard]] const std::string& reason() const { return std::get<Failure>(m_state).reason; }

private:
    std::variant<T, Failure> m_state;
};

// Result of an operation that yields nothing but may fail.
class [[nodiscard]] Status {
public:
    Status() = default;
    Status(Failure failure) : m_reason(std::move(failure.reason)) {}  // NOLINT(google-explicit-constructor)

    [[nodiscard]] bool ok() const { return !m_reason.has_value(); }
    explicit operator bool() const { return ok(); }
    [[nodiscard]] const std::string& reason() const { return *m_reason; }

private:
    std::optional<std::string> m_reason;
};

namespace detail {

template <typename T>
T TakeValue(Result<T>&& result) {
    return std::move(result).value();
}

inline void TakeValue(Status&& /*status*/) {}

}  // namespace detail

}  // namespace glyphmoor

// TRY(expression): the value of a Result (nothing for a Status); when it
// failed, the enclosing function returns that failure as it is. A GNU
// statement expression (GCC and Clang, MinGW included); __extension__ keeps
// -Wpedantic quiet about it. Not to be nested in one expression.
#define TRY(expression)                                            \
    __extension__({                                                \
        auto&& glyphmoor_try_ = (expression);                      \
        if (!glyphmoor_try_.ok()) {                                \
            return ::glyphmoor::Fail(glyphmoor_try_.reason());     \
        }                                                          \
        ::glyphmoor::detail::TakeValue(std::move(glyphmoor_try_)); \
    })
