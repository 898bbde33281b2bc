#include "io/translation.h"

#include <algorithm>
#include <atomic>
#include <cstring>

namespace quillon {
namespace {

std::atomic<Langue> langueChoisie{Langue::Francais};

uint32_t Mot(std::span<const unsigned char> mo, std::size_t position, bool inverse) {
  if (position + 4 > mo.size()) return 0;
  const unsigned char* o = mo.data() + position;
  return inverse ? uint32_t(o[0]) << 24 | uint32_t(o[1]) << 16 | uint32_t(o[2]) << 8 | o[3]
                 : uint32_t(o[3]) << 24 | uint32_t(o[2]) << 16 | uint32_t(o[1]) << 8 | o[0];
}

// The string of table entry `k` (length, then offset), or null when the
// catalogue is damaged.
const char* Chaine(std::span<const unsigned char> mo, uint32_t table, uint32_t k, bool inverse) {
  const uint32_t longueur = Mot(mo, table + 8 * std::size_t{k}, inverse);
  const uint32_t debut = Mot(mo, table + 8 * std::size_t{k} + 4, inverse);
  if (std::size_t{debut} + longueur >= mo.size() || mo[debut + longueur] != 0) return nullptr;
  return reinterpret_cast<const char*>(mo.data() + debut);
}

// The translation of `texte` in a .mo catalogue, whose originals msgfmt
// sorts by their bytes: a binary search. Null when it has none.
const char* Chercher(std::span<const unsigned char> mo, std::string_view texte) {
  if (mo.size() < 28) return nullptr;
  const bool inverse = Mot(mo, 0, false) != 0x950412deu;
  if (inverse && Mot(mo, 0, true) != 0x950412deu) return nullptr;
  const uint32_t nombre = Mot(mo, 8, inverse), originaux = Mot(mo, 12, inverse), traductions = Mot(mo, 16, inverse);
  uint32_t bas = 0, haut = nombre;
  while (bas < haut) {
    const uint32_t milieu = bas + (haut - bas) / 2;
    const char* original = Chaine(mo, originaux, milieu, inverse);
    if (original == nullptr) return nullptr;
    const int ordre = std::string_view(original).compare(texte);
    if (ordre == 0) {
      const char* traduction = Chaine(mo, traductions, milieu, inverse);
      return traduction != nullptr && *traduction != 0 ? traduction : nullptr;
    }
    if (ordre < 0) {
      bas = milieu + 1;
    } else {
      haut = milieu;
    }
  }
  return nullptr;
}

// "de_CH.UTF-8@euro" is German: the letters before '_', '.' or '@'.
std::optional<Langue> LangueDeLocale(std::string_view locale) {
  return LangueDuCode(locale.substr(0, locale.find_first_of("_.@")));
}

bool Vide(const char* v) { return v == nullptr || *v == 0; }

}  // namespace

void ChoisirLangue(Langue langue) { langueChoisie.store(langue, std::memory_order_relaxed); }
Langue LangueChoisie() { return langueChoisie.load(std::memory_order_relaxed); }

std::optional<Langue> LangueDuCode(std::string_view code) {
  if (code == "fr") return Langue::Francais;
  if (code == "de") return Langue::Allemand;
  if (code == "it") return Langue::Italien;
  return std::nullopt;
}

std::string_view CodeLangue(Langue langue) {
  switch (langue) {
    case Langue::Allemand: return "de";
    case Langue::Italien: return "it";
    case Langue::Francais: break;
  }
  return "fr";
}

Langue LangueDesVariables(const char* language, const char* lcAll, const char* lcMessages, const char* lang) {
  const char* locale = !Vide(lcAll) ? lcAll : !Vide(lcMessages) ? lcMessages : !Vide(lang) ? lang : "";
  const std::string_view nom(locale);
  if (!Vide(language) && nom != "C" && nom != "POSIX" && !nom.starts_with("C.")) {
    std::string_view liste(language);
    while (!liste.empty()) {
      const std::size_t fin = std::min(liste.find(':'), liste.size());
      if (const std::optional<Langue> l = LangueDeLocale(liste.substr(0, fin))) return *l;
      liste.remove_prefix(std::min(fin + 1, liste.size()));
    }
  }
  return LangueDeLocale(nom).value_or(Langue::Francais);
}

std::string_view Traduire(std::string_view texte, Langue langue) {
  if (texte.empty()) return texte;  // "" holds the catalogue's header
  const char* traduction = Chercher(CatalogueMo(langue), texte);
  return traduction != nullptr ? std::string_view(traduction) : texte;
}

std::string_view Traduire(std::string_view texte) { return Traduire(texte, LangueChoisie()); }

// Either string ends with a null: the catalogue's, or texte itself.
const char* Traduire(const char* texte) { return texte == nullptr ? texte : Traduire(std::string_view(texte)).data(); }

std::string Formater(const char* modele, std::initializer_list<std::string_view> valeurs) {
  const std::string_view m(Traduire(modele));
  std::string texte;
  std::size_t suivante = 0;
  for (std::size_t i = 0; i < m.size(); ++i) {
    if (m[i] != '%' || i + 1 >= m.size()) {
      texte += m[i];
      continue;
    }
    std::size_t j = i + 1;
    if (m[j] == '%') {
      texte += '%';
      i = j;
      continue;
    }
    std::optional<std::size_t> position;
    if (m[j] >= '1' && m[j] <= '9' && j + 2 < m.size() && m[j + 1] == '$') {
      position = std::size_t(m[j] - '1');
      j += 2;
    }
    // Only %s takes a value: another directive is not ours.
    const std::size_t rang = m[j] != 's' ? valeurs.size() : position ? *position : suivante++;
    if (rang < valeurs.size()) {
      texte += valeurs.begin()[rang];
    } else {
      texte.append(m.substr(i, j + 1 - i));  // not ours: left as written
    }
    i = j;
  }
  return texte;
}

}  // namespace quillon
