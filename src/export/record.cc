#include "export/record.h"

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

constexpr Colonne kRejets[] = {
    {"ligne", TypeChamp::Entier}, {"theme", TypeChamp::Entier},   {"commune", TypeChamp::Entier},
    {"plan", TypeChamp::Entier},  {"numero", TypeChamp::Texte},   {"y", TypeChamp::Reel},
    {"x", TypeChamp::Reel},       {"messages", TypeChamp::Texte}, {"source", TypeChamp::Texte},
};

// Each column of the enums in record.h is the one of its name here.
template <std::size_t N, typename Indice>
constexpr bool EnPlace(const Colonne (&table)[N], Indice indice, std::string_view nom) {
  return static_cast<std::size_t>(indice) < N && table[static_cast<std::size_t>(indice)].nom == nom;
}
static_assert(std::size(kPoints) == static_cast<std::size_t>(ColonnePoint::Nombre));
static_assert(EnPlace(kPoints, ColonnePoint::Theme, "theme"));
static_assert(EnPlace(kPoints, ColonnePoint::Commune, "commune"));
static_assert(EnPlace(kPoints, ColonnePoint::Plan, "plan"));
static_assert(EnPlace(kPoints, ColonnePoint::Numero, "numero"));
static_assert(EnPlace(kPoints, ColonnePoint::Nature, "nature"));
static_assert(EnPlace(kPoints, ColonnePoint::Y, "y"));
static_assert(EnPlace(kPoints, ColonnePoint::X, "x"));
static_assert(EnPlace(kPoints, ColonnePoint::Altitude, "altitude"));
static_assert(EnPlace(kPoints, ColonnePoint::PrecPlan, "prec_plan"));
static_assert(EnPlace(kPoints, ColonnePoint::FiabPlan, "fiab_plan"));
static_assert(EnPlace(kPoints, ColonnePoint::PrecAlt, "prec_alt"));
static_assert(EnPlace(kPoints, ColonnePoint::FiabAlt, "fiab_alt"));
static_assert(EnPlace(kPoints, ColonnePoint::Valeur, "valeur"));
static_assert(EnPlace(kPoints, ColonnePoint::FichePFP3, "fiche_pfp3"));
static_assert(EnPlace(kPoints, ColonnePoint::Commentaire, "commentaire"));
static_assert(EnPlace(kPoints, ColonnePoint::Type, "type"));
static_assert(EnPlace(kPoints, ColonnePoint::Ligne, "ligne"));
static_assert(std::size(kRejets) == static_cast<std::size_t>(ColonneRejet::Nombre));
static_assert(EnPlace(kRejets, ColonneRejet::Ligne, "ligne"));
static_assert(EnPlace(kRejets, ColonneRejet::Theme, "theme"));
static_assert(EnPlace(kRejets, ColonneRejet::Commune, "commune"));
static_assert(EnPlace(kRejets, ColonneRejet::Plan, "plan"));
static_assert(EnPlace(kRejets, ColonneRejet::Numero, "numero"));
static_assert(EnPlace(kRejets, ColonneRejet::Y, "y"));
static_assert(EnPlace(kRejets, ColonneRejet::X, "x"));
static_assert(EnPlace(kRejets, ColonneRejet::Messages, "messages"));
static_assert(EnPlace(kRejets, ColonneRejet::Source, "source"));

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
