#include "export/records.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace quillon {
namespace {

constexpr Colonne kPoints[] = {
    {"theme", TypeChamp::Entier},      {"commune", TypeChamp::Entier},     {"plan", TypeChamp::Entier},
    {"numero", TypeChamp::Texte},      {"nature", TypeChamp::Entier},      {"y", TypeChamp::Reel},
    {"x", TypeChamp::Reel},            {"altitude", TypeChamp::Reel},      {"prec_plan", TypeChamp::Reel},
    {"fiab_plan", TypeChamp::Texte},   {"prec_alt", TypeChamp::Reel},      {"fiab_alt", TypeChamp::Texte},
    {"valeur", TypeChamp::Entier},     {"fiche_pfp3", TypeChamp::Texte},   {"commentaire", TypeChamp::Texte},
    {"type", TypeChamp::Texte},        {"ligne", TypeChamp::Entier},
};
static_assert(std::size(kPoints) <= kColonnesMax);

constexpr Colonne kRejets[] = {
    {"ligne", TypeChamp::Entier}, {"theme", TypeChamp::Entier},   {"commune", TypeChamp::Entier},
    {"plan", TypeChamp::Entier},  {"numero", TypeChamp::Texte},   {"y", TypeChamp::Reel},
    {"x", TypeChamp::Reel},       {"messages", TypeChamp::Texte}, {"source", TypeChamp::Texte},
};

}  // namespace

const char* NomCouche(Couche couche) { return couche == Couche::Points ? "points" : "rejets"; }

std::span<const Colonne> ColonnesDe(Couche couche) {
  if (couche == Couche::Points) return kPoints;
  return kRejets;
}

char* TexteMilliemes(char* p, double v) {
  if (!(std::fabs(v) < 1e12) || (v == 0 && std::signbit(v))) return nullptr;
  const int64_t milliemes = std::llround(v * 1000);
  if (static_cast<double>(milliemes) / 1000 != v) return nullptr;
  const uint64_t reste = milliemes < 0 ? -static_cast<uint64_t>(milliemes) : static_cast<uint64_t>(milliemes);
  if (milliemes < 0) *p++ = '-';
  p = std::to_chars(p, p + 20, reste / 1000).ptr;
  int fraction = static_cast<int>(reste % 1000);
  if (fraction != 0) {
    *p++ = '.';
    for (int diviseur = 100; fraction != 0; diviseur /= 10) {
      *p++ = static_cast<char>('0' + fraction / diviseur);
      fraction %= diviseur;
    }
  }
  return p;
}

void AjouterReel(std::string& texte, double v) {
  char tampon[32];
  char* fin = TexteMilliemes(tampon, v);
  if (fin == nullptr) fin = std::to_chars(tampon, tampon + sizeof tampon, v).ptr;
  texte.append(tampon, fin);
}

void AjouterEntier(std::string& texte, int64_t v) {
  char tampon[24];
  const auto r = std::to_chars(tampon, tampon + sizeof tampon, v);
  texte.append(tampon, r.ptr);
}

std::string TexteReel(double v) {
  std::string texte;
  AjouterReel(texte, v);
  return texte;
}

std::string TexteEntier(int64_t v) {
  std::string texte;
  AjouterEntier(texte, v);
  return texte;
}

std::string TexteDuChamp(const Valeur& v, TypeChamp type) {
  if (!v.present) return {};
  switch (type) {
    case TypeChamp::Entier: return TexteEntier(v.entier);
    case TypeChamp::Reel: return TexteReel(v.reel);
    case TypeChamp::Texte: return v.texte;
  }
  return {};
}

}  // namespace quillon
