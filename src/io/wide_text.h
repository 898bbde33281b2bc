// Texts between UTF-8, as the program holds them, and the wide strings of
// Windows' API. For the -win32 files only: a wide character is UTF-16 there
// and nowhere else.
#pragma once

#include <string>
#include <string_view>

#include "io/encoding.h"

static_assert(sizeof(wchar_t) == sizeof(char16_t), "io/wide_text.h is for Windows' 16-bit wide characters");

namespace quillon {

inline std::wstring Large(std::string_view utf8) {
  const std::u16string texte = Utf8VersUtf16(utf8);
  return std::wstring(texte.begin(), texte.end());
}

inline std::string Utf8(std::wstring_view large) {
  return Utf16VersUtf8(std::u16string_view(reinterpret_cast<const char16_t*>(large.data()), large.size()));
}

}  // namespace quillon
