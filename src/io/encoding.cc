#include "io/encoding.h"

#include <cstdint>

namespace quillon {
namespace {

// Unicode code points of the bytes 0x80 to 0x9F. The five bytes that the
// code page leaves undefined keep their Latin-1 control code points, so that
// a round trip loses nothing.
constexpr char16_t kPlage80[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

char32_t PointCode(unsigned char octet) {
  if (octet >= 0x80 && octet < 0xA0) return kPlage80[octet - 0x80];
  return octet;
}

void AjouterUtf8(std::string& sortie, char32_t c) {
  if (c < 0x80) {
    sortie += static_cast<char>(c);
  } else if (c < 0x800) {
    sortie += static_cast<char>(0xC0 | (c >> 6));
    sortie += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    sortie += static_cast<char>(0xE0 | (c >> 12));
    sortie += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    sortie += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    sortie += static_cast<char>(0xF0 | (c >> 18));
    sortie += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    sortie += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    sortie += static_cast<char>(0x80 | (c & 0x3F));
  }
}

char OctetCp1252(char32_t c) {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
  for (int i = 0; i < 32; ++i) {
    if (kPlage80[i] == c) return static_cast<char>(0x80 + i);
  }
  return '?';
}

// Decodes one UTF-8 character at `i`; false when the bytes are not UTF-8.
// With `surrogats`, the code points of lone UTF-16 halves pass too.
bool Decoder(std::string_view t, std::size_t& i, char32_t& c, bool surrogats = false) {
  const auto o = [&](std::size_t k) { return static_cast<unsigned char>(t[k]); };
  const unsigned char b = o(i);
  int suite;
  if (b < 0x80) {
    c = b;
    suite = 0;
  } else if (b >= 0xC2 && b < 0xE0) {
    c = b & 0x1F;
    suite = 1;
  } else if (b >= 0xE0 && b < 0xF0) {
    c = b & 0x0F;
    suite = 2;
  } else if (b >= 0xF0 && b < 0xF5) {
    c = b & 0x07;
    suite = 3;
  } else {
    return false;
  }
  if (i + suite >= t.size()) return false;
  for (int k = 1; k <= suite; ++k) {
    if ((o(i + k) & 0xC0) != 0x80) return false;
    c = (c << 6) | (o(i + k) & 0x3F);
  }
  if ((suite == 2 && c < 0x800) || (suite == 3 && (c < 0x10000 || c > 0x10FFFF)) ||
      (!surrogats && c >= 0xD800 && c <= 0xDFFF)) {
    return false;
  }
  i += suite + 1;
  return true;
}

}  // namespace

void AjouterCp1252EnUtf8(std::string& sortie, std::string_view texte) {
  while (!texte.empty()) {
    // ASCII, the same bytes in both, goes through in one piece.
    std::size_t ascii = 0;
    while (ascii < texte.size() && static_cast<unsigned char>(texte[ascii]) < 0x80) ++ascii;
    sortie.append(texte.substr(0, ascii));
    if (ascii == texte.size()) return;
    AjouterUtf8(sortie, PointCode(static_cast<unsigned char>(texte[ascii])));
    texte.remove_prefix(ascii + 1);
  }
}

std::string Cp1252VersUtf8(std::string_view texte) {
  std::string sortie;
  sortie.reserve(texte.size() + texte.size() / 8);
  AjouterCp1252EnUtf8(sortie, texte);
  return sortie;
}

std::string Utf8VersCp1252(std::string_view texte) {
  std::string sortie;
  sortie.reserve(texte.size());
  for (std::size_t i = 0; i < texte.size();) {
    char32_t c;
    if (!Decoder(texte, i, c)) return std::string(texte);
    sortie += OctetCp1252(c);
  }
  return sortie;
}

char MajusculeAnsi(char c) {
  const auto o = static_cast<unsigned char>(c);
  if (o >= 'a' && o <= 'z') return static_cast<char>(o - 0x20);
  if (o >= 0xE0 && o <= 0xFE && o != 0xF7) return static_cast<char>(o - 0x20);
  switch (o) {
    case 0x9A: return static_cast<char>(0x8A);  // š
    case 0x9C: return static_cast<char>(0x8C);  // œ
    case 0x9E: return static_cast<char>(0x8E);  // ž
    case 0xFF: return static_cast<char>(0x9F);  // ÿ
    default: return c;
  }
}

std::u16string Utf8VersUtf16(std::string_view texte) {
  std::u16string sortie;
  sortie.reserve(texte.size());
  for (std::size_t i = 0; i < texte.size();) {
    char32_t c;
    if (!Decoder(texte, i, c, true)) {
      c = 0xFFFD;
      ++i;
    }
    if (c >= 0x10000) {
      sortie += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
      sortie += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
    } else {
      sortie += static_cast<char16_t>(c);
    }
  }
  return sortie;
}

std::string Utf16VersUtf8(std::u16string_view texte) {
  std::string sortie;
  sortie.reserve(texte.size());
  for (std::size_t i = 0; i < texte.size(); ++i) {
    char32_t c = texte[i];
    if (c >= 0xD800 && c < 0xDC00 && i + 1 < texte.size() && texte[i + 1] >= 0xDC00 && texte[i + 1] < 0xE000) {
      c = 0x10000 + ((c - 0xD800) << 10) + (texte[++i] - 0xDC00);
    }
    AjouterUtf8(sortie, c);
  }
  return sortie;
}

bool EstUtf8(std::string_view texte) {
  std::size_t i = 0;
  while (i < texte.size()) {
    const auto c = static_cast<unsigned char>(texte[i]);
    std::size_t suite;
    char32_t point;
    if (c < 0x80) {
      ++i;
      continue;
    } else if (c >= 0xC2 && c <= 0xDF) {
      suite = 1, point = c & 0x1F;
    } else if (c >= 0xE0 && c <= 0xEF) {
      suite = 2, point = c & 0x0F;
    } else if (c >= 0xF0 && c <= 0xF4) {
      suite = 3, point = c & 0x07;
    } else {
      return false;
    }
    if (i + suite >= texte.size()) return false;
    for (std::size_t k = 1; k <= suite; ++k) {
      const auto s = static_cast<unsigned char>(texte[i + k]);
      if ((s & 0xC0) != 0x80) return false;
      point = (point << 6) | (s & 0x3F);
    }
    if ((suite == 2 && (point < 0x800 || (point >= 0xD800 && point <= 0xDFFF))) ||
        (suite == 3 && (point < 0x10000 || point > 0x10FFFF))) {
      return false;
    }
    i += suite + 1;
  }
  return true;
}


std::string NomEnUtf8(std::string_view nom) { return EstUtf8(nom) ? std::string(nom) : Cp1252VersUtf8(nom); }

}  // namespace quillon
