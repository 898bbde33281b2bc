#include "export/records.h"

#include <charconv>

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

std::string TexteReel(double v) {
  char tampon[32];
  const auto r = std::to_chars(tampon, tampon + sizeof tampon, v);
  return {tampon, r.ptr};
}

std::string TexteEntier(int64_t v) {
  char tampon[24];
  const auto r = std::to_chars(tampon, tampon + sizeof tampon, v);
  return {tampon, r.ptr};
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
