#include "report/texts.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "io/translation.h"
#include "model/point.h"

namespace quillon {

std::string TexteMetres(double metres, int decimales) {
  char texte[64];
  const auto r = std::to_chars(texte, texte + sizeof texte, metres, std::chars_format::fixed, decimales);
  std::string s(texte, r.ptr);
  if (s.front() == '-' && s.find_first_not_of("-0.") == std::string::npos) s.erase(0, 1);
  return s;
}

std::string TexteMetresCourt(double metres, int decimales) {
  std::string s = TexteMetres(metres, decimales);
  if (s.find('.') != std::string::npos) {
    while (s.back() == '0') s.pop_back();
    if (s.back() == '.') s.pop_back();
  }
  return s;
}

int64_t Millimetres(double metres) {
  return static_cast<int64_t>(std::llround(std::clamp(metres * 1000, -1e15, 1e15)));
}

std::string TexteTheme(int theme) {
  if (theme < 0) return N_("illisible");
  if (theme == kThemeBlanc) return N_("blanc");
  return std::to_string(theme);
}

std::string TexteIdentite(int theme, int commune, int plan, std::string_view numero) {
  while (!numero.empty() && numero.front() == ' ') numero.remove_prefix(1);
  while (!numero.empty() && numero.back() == ' ') numero.remove_suffix(1);
  return TexteTheme(theme) + "/" + std::to_string(commune) + "/" + std::to_string(plan) + "/" + std::string(numero);
}

}  // namespace quillon
