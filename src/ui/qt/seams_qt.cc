#include "ui/qt/seams_qt.h"

#include <string>

#include <QApplication>
#include <QByteArray>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QSettings>
#include <QUrl>
#include <QWidget>

#include "io/translation.h"
#include "ui/qt/main_window.h"

namespace quillon {
namespace {

using DialogueQt = QString (*)(QWidget*, const QString&, const QString&, const QString&, QString*,
                               QFileDialog::Options);

std::optional<FichierChoisi> Choisir(DialogueQt dialogue, Parent parent, const std::string& titre,
                                     const std::string& filtre, int indexFiltre) {
  const QStringList filtres = FiltresQt(QString::fromStdString(filtre));
  QString selection = filtres.value(indexFiltre - 1);
  const QString nom = dialogue(WidgetDe(parent), QString::fromStdString(titre), QString(), filtres.join(QStringLiteral(";;")), &selection,
                               QFileDialog::Options());
  if (nom.isEmpty()) return std::nullopt;
  const QByteArray octets = QFile::encodeName(nom);
  return FichierChoisi{std::string(octets.constData(), static_cast<std::size_t>(octets.size())),
                       static_cast<int>(filtres.indexOf(selection)) + 1};
}

// The "\r\n" between the lines of a message, as a label shows line ends.
QString TexteAffiche(const std::string& texte) {
  return QString::fromStdString(texte).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

}  // namespace

QStringList FiltresQt(const QString& filtre) {
  const QStringList morceaux = filtre.split(QLatin1Char('|'));
  QStringList filtres;
  for (qsizetype i = 0; i + 1 < morceaux.size(); i += 2) {
    const QString& description = morceaux[i];
    const QString& motif = morceaux[i + 1];
    QString qt = description.contains(QLatin1Char('(') + motif + QLatin1Char(')'))
                     ? description
                     : description + QStringLiteral(" (") + motif + QLatin1Char(')');
    // Several patterns: ";" between them for Windows, a blank for Qt.
    filtres << qt.replace(QLatin1Char(';'), QLatin1Char(' '));
  }
  return filtres;
}

std::optional<FichierChoisi> DialoguesFichiersQt::Ouvrir(Parent parent, const std::string& titre,
                                                         const std::string& filtre, int indexFiltre) {
  return Choisir(&QFileDialog::getOpenFileName, parent, titre, filtre, indexFiltre);
}

std::optional<FichierChoisi> DialoguesFichiersQt::EnregistrerSous(Parent parent, const std::string& titre,
                                                                  const std::string& filtre, int indexFiltre) {
  return Choisir(&QFileDialog::getSaveFileName, parent, titre, filtre, indexFiltre);
}

std::vector<std::string> DialoguesFichiersQt::OuvrirPlusieurs(Parent parent, const std::string& titre,
                                                              const std::string& filtre) {
  const QStringList noms = QFileDialog::getOpenFileNames(WidgetDe(parent), QString::fromStdString(titre), QString(),
                                                         FiltresQt(QString::fromStdString(filtre)).join(QStringLiteral(";;")));
  std::vector<std::string> fichiers;
  for (const QString& nom : noms) {
    const QByteArray octets = QFile::encodeName(nom);
    fichiers.emplace_back(octets.constData(), static_cast<std::size_t>(octets.size()));
  }
  return fichiers;
}

std::optional<std::string> DialoguesFichiersQt::ChoisirDossier(Parent parent, const std::string& titre,
                                                               const std::string& depart) {
  const QString dossier = QFileDialog::getExistingDirectory(
      WidgetDe(parent), QString::fromStdString(titre),
      QFile::decodeName(QByteArray(depart.data(), static_cast<qsizetype>(depart.size()))));
  if (dossier.isEmpty()) return std::nullopt;
  const QByteArray octets = QFile::encodeName(dossier);
  return std::string(octets.constData(), static_cast<std::size_t>(octets.size()));
}

void BoitesMessagesQt::Message(Parent parent, const std::string& titre, const std::string& texte) {
  QMessageBox boite(QMessageBox::NoIcon, QString::fromStdString(titre), TexteAffiche(texte), QMessageBox::Ok,
                    WidgetDe(parent));
  boite.setTextFormat(Qt::PlainText);
  boite.exec();
}

int BoitesMessagesQt::MessageAvecBoutons(Parent parent, const std::string& titre, const std::string& texte,
                                         const std::vector<std::string>& boutons) {
  QMessageBox boite(QMessageBox::NoIcon, QString::fromStdString(titre), TexteAffiche(texte), QMessageBox::Ok,
                    WidgetDe(parent));
  boite.setTextFormat(Qt::PlainText);
  std::vector<const QAbstractButton*> autres;
  for (const std::string& bouton : boutons) {
    autres.push_back(boite.addButton(QString::fromStdString(bouton), QMessageBox::ActionRole));
  }
  boite.setDefaultButton(QMessageBox::Ok);
  boite.setEscapeButton(QMessageBox::Ok);
  boite.exec();
  for (std::size_t k = 0; k < autres.size(); ++k) {
    if (boite.clickedButton() == autres[k]) return static_cast<int>(k) + 1;
  }
  return 0;
}

void BoitesMessagesQt::ErreurFatale(Parent parent, const std::string& texte) {
  QMessageBox boite(QMessageBox::Critical, TexteQt(Traduire("Erreur fatale")), TexteAffiche(texte),
                    QMessageBox::Ok, WidgetDe(parent));
  boite.setTextFormat(Qt::PlainText);
  boite.exec();
}

bool BoitesMessagesQt::Question(Parent parent, const std::string& titre, const std::string& texte) {
  QMessageBox boite(QMessageBox::Question, QString::fromStdString(titre), TexteAffiche(texte), QMessageBox::NoButton,
                    WidgetDe(parent));
  boite.setTextFormat(Qt::PlainText);
  const QAbstractButton* oui = boite.addButton(TexteQt(Traduire("Oui")), QMessageBox::YesRole);
  boite.setDefaultButton(boite.addButton(TexteQt(Traduire("Non")), QMessageBox::NoRole));
  boite.exec();
  return boite.clickedButton() == oui;
}

void FinProgrammeQt::Terminer() {
  // Hidden rather than closed: a window's own close handler would end the
  // program a second time.
  const QWidgetList fenetres = QApplication::topLevelWidgets();
  for (QWidget* fenetre : fenetres) fenetre->hide();
  QCoreApplication::exit(0);
}

bool ProgrammesQt::FichierExiste(const std::string& chemin) {
  return QFileInfo(QFile::decodeName(QByteArray(chemin.data(), static_cast<qsizetype>(chemin.size())))).isFile();
}

bool ProgrammesQt::Demarrer(const std::string& chemin) {
  if (chemin.empty()) return false;
  return QProcess::startDetached(
      QFile::decodeName(QByteArray(chemin.data(), static_cast<qsizetype>(chemin.size()))), QStringList());
}

std::string DocumentsQt::DossierTemporaire() {
  const QByteArray octets = QFile::encodeName(QDir::tempPath() + QLatin1Char('/'));
  return std::string(octets.constData(), static_cast<std::size_t>(octets.size()));
}

bool DocumentsQt::Ouvrir(const std::string& chemin) {
  return QDesktopServices::openUrl(
      QUrl::fromLocalFile(QFile::decodeName(QByteArray(chemin.data(), static_cast<qsizetype>(chemin.size())))));
}

bool DocumentsQt::OuvrirDossier(const std::string& chemin) { return Ouvrir(chemin); }

std::string PreferencesQt::Lire(const std::string& cle) {
  return QSettings(QStringLiteral("Quillon"), QStringLiteral("Quillon"))
      .value(QString::fromStdString(cle))
      .toString()
      .toStdString();
}

void PreferencesQt::Ecrire(const std::string& cle, const std::string& valeur) {
  QSettings reglages(QStringLiteral("Quillon"), QStringLiteral("Quillon"));
  reglages.setValue(QString::fromStdString(cle), QString::fromStdString(valeur));
  reglages.sync();
}

}  // namespace quillon
