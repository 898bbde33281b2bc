#include <langinfo.h>
#include <locale.h>

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

std::string FormaterDateJournal(const std::tm& moment, const char* nomLocale) {
  locale_t loc = OuvrirLocale(nomLocale);
  const int mois = moment.tm_mon >= 0 && moment.tm_mon < 12 ? moment.tm_mon : 0;
  std::string nomMois = ::nl_langinfo_l(static_cast<nl_item>(ABMON_1 + mois), loc);
  if (EstUtf8(loc)) nomMois = Utf8VersCp1252(nomMois);
  ::freelocale(loc);

  return ComposerDateJournal(moment, nomMois);
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
