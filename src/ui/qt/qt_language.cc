#include "ui/qt/qt_language.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QString>

namespace quillon {

bool InstallerTraductionQt(QTranslator& traducteur, Langue langue) {
  QCoreApplication::removeTranslator(&traducteur);
  const std::string_view code = CodeLangue(langue);
  const QString nom = QStringLiteral("qtbase_") + QString::fromLatin1(code.data(), qsizetype(code.size()));
  if (!traducteur.load(nom, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) return false;
  return QCoreApplication::installTranslator(&traducteur);
}

}  // namespace quillon
