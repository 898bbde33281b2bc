#include <langinfo.h>
#include <locale.h>

#include <array>
#include <cstring>

#include "io/encoding.h"
#include "io/locale.h"

namespace quillon {
namespace {

locale_t OuvrirLocale(const char* nom) {
  locale_t loc = ::newlocale(LC_CTYPE_MASK | LC_TIME_MASK, nom, static_cast<locale_t>(0));
  if (loc == static_cast<locale_t>(0)) loc = ::newlocale(LC_CTYPE_MASK | LC_TIME_MASK, "C", static_cast<locale_t>(0));
  return loc;
}

bool EstUtf8(locale_t loc) {
  const char* codage = ::nl_langinfo_l(CODESET, loc);
  return codage != nullptr && (std::strcmp(codage, "UTF-8") == 0 || std::strcmp(codage, "utf8") == 0);
}

}  // namespace

bool LocaleEnUtf8() {
  static const bool utf8 = [] {
    locale_t loc = OuvrirLocale("");
    const bool oui = EstUtf8(loc);
    ::freelocale(loc);
    return oui;
  }();
  return utf8;
}

namespace {

// The abbreviated names of the months in a locale, Windows-1252.
std::array<std::string, 12> NomsMois(const char* nomLocale) {
  locale_t loc = OuvrirLocale(nomLocale);
  std::array<std::string, 12> noms;
  for (int mois = 0; mois < 12; ++mois) {
    noms[static_cast<std::size_t>(mois)] = ::nl_langinfo_l(static_cast<nl_item>(ABMON_1 + mois), loc);
    if (EstUtf8(loc)) noms[static_cast<std::size_t>(mois)] = Utf8VersCp1252(noms[static_cast<std::size_t>(mois)]);
  }
  ::freelocale(loc);
  return noms;
}

}  // namespace

std::string FormaterDateJournal(const std::tm& moment, const char* nomLocale) {
  // The user's locale is looked up once: a batch dates a log per file.
  static const std::array<std::string, 12> kNomsUtilisateur = NomsMois("");
  const int mois = moment.tm_mon >= 0 && moment.tm_mon < 12 ? moment.tm_mon : 0;
  if (*nomLocale == '\0') return ComposerDateJournal(moment, kNomsUtilisateur[static_cast<std::size_t>(mois)]);
  return ComposerDateJournal(moment, NomsMois(nomLocale)[static_cast<std::size_t>(mois)]);
}

std::string DateHeureJournal() {
  const std::time_t maintenant = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&maintenant, &local);
  return FormaterDateJournal(local);
}

}  // namespace quillon

namespace quillon {

std::string CheminAffichable(const std::string& nom) { return LocaleEnUtf8() ? Utf8VersCp1252(nom) : nom; }

}  // namespace quillon
