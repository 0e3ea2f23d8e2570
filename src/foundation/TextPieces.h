// TextPieces: a text kept as the pieces it is made of, so that a large file
// written with a few changes goes out from the bytes it was read from rather
// than through a copy of the whole.
//
// A piece is either borrowed (a view into text that outlives the pieces, such
// as a loaded hive's file) or owned (a string the pieces keep). Borrowed
// pieces that follow each other in memory are joined into one, so the
// untouched stretches of a file come out as a few long pieces. Copies and
// moves keep every piece valid: owned pieces are found by their index.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

class TextPieces {
public:
    TextPieces() = default;
    // One owned piece; a plain string converts, for callers that have one.
    TextPieces(std::string text);  // NOLINT(google-explicit-constructor)
    // One borrowed piece.
    static TextPieces Borrowing(std::string_view text);

    void Borrow(std::string_view text);
    // Appends a copy of text (to the last piece, when that is owned).
    void Copy(std::string_view text);

    [[nodiscard]] std::size_t size() const { return m_size; }
    [[nodiscard]] std::size_t PieceCount() const { return m_pieces.size(); }
    [[nodiscard]] std::string Join() const;
    // Hands each piece over in order; false as soon as `take` is.
    bool ForEach(const std::function<bool(std::string_view)>& take) const;

private:
    static constexpr std::size_t kBorrowed = static_cast<std::size_t>(-1);
    struct Piece {
        std::string_view borrowed;
        std::size_t owned = kBorrowed;  // index into m_owned
    };
    [[nodiscard]] std::string_view View(const Piece& piece) const {
        return piece.owned == kBorrowed ? piece.borrowed : std::string_view(m_owned[piece.owned]);
    }

    std::vector<std::string> m_owned;
    std::vector<Piece> m_pieces;
    std::size_t m_size = 0;
};

// Hands the text over in order in chunks of at most `chunk` bytes; false as
// soon as `write` is.
bool WriteInChunks(const TextPieces& text, std::size_t chunk,
                   const std::function<bool(std::string_view)>& write);

}  // namespace glyphmoor
