// The user's locale on Windows: the month abbreviations of the log's date.
#include <windows.h>

#include <string>

#include "io/encoding.h"
#include "io/locale.h"
#include "io/wide_text.h"

namespace quillon {
namespace {

// A locale name as Windows knows it: "" for the user's own, "C" or "POSIX"
// for the invariant one, and "fr_FR.UTF-8" (POSIX's spelling) as "fr-FR".
std::wstring NomWindows(const char* nom) {
  std::string texte = nom;
  texte = texte.substr(0, texte.find('.'));
  for (char& c : texte) {
    if (c == '_') c = '-';
  }
  return std::wstring(texte.begin(), texte.end());
}

}  // namespace

bool LocaleEnUtf8() { return false; }

std::string FormaterDateJournal(const std::tm& moment, const char* nomLocale) {
  static constexpr const char* kMoisAnglais[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                 "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  const int mois = moment.tm_mon >= 0 && moment.tm_mon < 12 ? moment.tm_mon : 0;
  SYSTEMTIME date{};
  date.wYear = static_cast<WORD>(moment.tm_year + 1900);
  date.wMonth = static_cast<WORD>(mois + 1);
  date.wDay = 1;  // the month's name does not depend on the day
  const std::string nom = nomLocale;
  const std::wstring windows = NomWindows(nomLocale);
  const wchar_t* locale = nom.empty() ? LOCALE_NAME_USER_DEFAULT
                          : nom == "C" || nom == "POSIX" ? LOCALE_NAME_INVARIANT
                                                          : windows.c_str();
  wchar_t texte[80];
  const int n = ::GetDateFormatEx(locale, 0, &date, L"MMM", texte, 80, nullptr);
  std::string nomMois = kMoisAnglais[mois];
  if (n > 1) nomMois = Utf8VersCp1252(Utf8(std::wstring_view(texte, n - 1)));
  return ComposerDateJournal(moment, nomMois);
}

std::string DateHeureJournal() {
  SYSTEMTIME maintenant;
  ::GetLocalTime(&maintenant);
  std::tm moment{};
  moment.tm_year = maintenant.wYear - 1900;
  moment.tm_mon = maintenant.wMonth - 1;
  moment.tm_mday = maintenant.wDay;
  moment.tm_hour = maintenant.wHour;
  moment.tm_min = maintenant.wMinute;
  moment.tm_sec = maintenant.wSecond;
  return FormaterDateJournal(moment);
}

std::string CheminAffichable(const std::string& nom) { return Utf8VersCp1252(nom); }

}  // namespace quillon
