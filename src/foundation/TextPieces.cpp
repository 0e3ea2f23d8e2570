#include "foundation/TextPieces.h"

namespace glyphmoor {

TextPieces::TextPieces(std::string text) {
    if (!text.empty()) {
        m_size = text.size();
        m_owned.push_back(std::move(text));
        m_pieces.push_back(Piece{{}, 0});
    }
}

TextPieces TextPieces::Borrowing(std::string_view text) {
    TextPieces pieces;
    pieces.Borrow(text);
    return pieces;
}

void TextPieces::Borrow(std::string_view text) {
    if (text.empty()) {
        return;
    }
    m_size += text.size();
    if (!m_pieces.empty() && m_pieces.back().owned == kBorrowed) {
        std::string_view& last = m_pieces.back().borrowed;
        if (last.data() + last.size() == text.data()) {
            last = std::string_view(last.data(), last.size() + text.size());
            return;
        }
    }
    m_pieces.push_back(Piece{text, kBorrowed});
}

void TextPieces::Copy(std::string_view text) {
    if (text.empty()) {
        return;
    }
    m_size += text.size();
    if (!m_pieces.empty() && m_pieces.back().owned != kBorrowed) {
        m_owned[m_pieces.back().owned] += text;
        return;
    }
    m_owned.emplace_back(text);
    m_pieces.push_back(Piece{{}, m_owned.size() - 1});
}

std::string TextPieces::Join() const {
    std::string out;
    out.reserve(m_size);
    for (const Piece& piece : m_pieces) {
        out += View(piece);
    }
    return out;
}

bool TextPieces::ForEach(const std::function<bool(std::string_view)>& take) const {
    for (const Piece& piece : m_pieces) {
        if (!take(View(piece))) {
            return false;
        }
    }
    return true;
}

bool WriteInChunks(const TextPieces& text, std::size_t chunk,
                   const std::function<bool(std::string_view)>& write) {
    return text.ForEach([&](std::string_view piece) {
        for (std::size_t offset = 0; offset < piece.size(); offset += chunk) {
            if (!write(piece.substr(offset, chunk))) {
                return false;
            }
        }
        return true;
    });
}

}  // namespace glyphmoor
