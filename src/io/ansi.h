// Compile-time Windows-1252 texts.
//
// Every text of the system (log messages, console lines) is single-byte
// Windows-1252, like the point files themselves. Ansi(u8"...") lets the
// source keep readable UTF-8 literals and turns them into Windows-1252 bytes
// while compiling; a character outside Latin-1's printable range is a
// compile error.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillon {

template <std::size_t N>
struct TexteAnsi {
  char octets[N] = {};
  std::size_t taille = 0;

  constexpr std::string_view vue() const { return {octets, taille}; }
  constexpr operator std::string_view() const { return vue(); }
  std::string str() const { return std::string(vue()); }
};

template <std::size_t N>
consteval TexteAnsi<N> Ansi(const char8_t (&utf8)[N]) {
  TexteAnsi<N> t;
  for (std::size_t i = 0; i + 1 < N;) {
    const unsigned c = utf8[i];
    if (c < 0x80) {
      t.octets[t.taille++] = static_cast<char>(c);
      i += 1;
    } else if ((c & 0xE0) == 0xC0 && i + 2 < N) {
      const unsigned point = ((c & 0x1F) << 6) | (utf8[i + 1] & 0x3F);
      if (point < 0xA0 || point > 0xFF) throw "caractere hors de Windows-1252";
      t.octets[t.taille++] = static_cast<char>(point);
      i += 2;
    } else {
      throw "caractere hors de Windows-1252";
    }
  }
  return t;
}

// std::string + TexteAnsi, for building messages.
template <std::size_t N>
std::string operator+(std::string a, const TexteAnsi<N>& b) {
  a.append(b.vue());
  return a;
}

}  // namespace quillon
