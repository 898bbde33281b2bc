#include "ui/windowed_mode.h"

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include <QApplication>
#include <QFile>
#include <QIcon>
#include <QTranslator>

#include "version.h"
#include "io/encoding.h"
#include "io/locale.h"
#include "ui/qt/app_icon.h"
#include "ui/qt/main_window.h"
#include "ui/qt/qt_language.h"
#include "ui/registry.h"
#include "ui/qt/seams_qt.h"
#include "ui/window_logic.h"

namespace quillon {
namespace {

constexpr int kCodeSansAffichage = 1;

std::string NomProgramme(int argc, char** argv) {
  if (argc < 1 || argv == nullptr || argv[0] == nullptr || argv[0][0] == '\0') return "quillon";
  std::string nom = argv[0];
  const std::size_t barre = nom.find_last_of("/\\");
  return barre == std::string::npos ? nom : nom.substr(barre + 1);
}

// The one line that explains why no window opens, in the user's encoding.
void SignalerSansAffichage(const std::string& programme, const std::string& raison) {
  const std::string ligne = programme + ": aucun affichage disponible pour la fenêtre principale (" + raison +
                            "); pour convertir en console: " + programme + " SOURCE CIBLE [ECHELLE THEME]\n";
  const std::string octets = LocaleEnUtf8() ? ligne : Utf8VersCp1252(ligne);
  std::fputs(octets.c_str(), stderr);
  std::fflush(stderr);
}

bool Defini(const char* variable) {
  const char* valeur = std::getenv(variable);
  return valeur != nullptr && valeur[0] != '\0';
}

// Why no display can be opened, when that can be told before trying.
std::optional<std::string> RaisonSansAffichage() {
#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
  if (Defini("QT_QPA_PLATFORM") || Defini("DISPLAY") || Defini("WAYLAND_DISPLAY")) return std::nullopt;
  return "DISPLAY non défini";
#else
  return std::nullopt;
#endif
}

// While the application starts, Qt's messages are held back: a display that
// cannot be opened then gives one line of our own instead of Qt's several,
// and an exit instead of an abort. Once started, the messages held back go
// where they would have gone.
struct MessageRetenu {
  QtMsgType type;
  const char* categorie;
  QString texte;
};
QtMessageHandler gGestionnairePrecedent = nullptr;
std::vector<MessageRetenu>* gMessagesRetenus = nullptr;
std::string* gProgramme = nullptr;

void RetenirMessage(QtMsgType type, const QMessageLogContext& contexte, const QString& texte) {
  if (type == QtFatalMsg) {
    SignalerSansAffichage(*gProgramme, "le module d'affichage de Qt n'a pas pu démarrer");
    std::_Exit(kCodeSansAffichage);
  }
  gMessagesRetenus->push_back({type, contexte.category, texte});
}

}  // namespace

int ModeFenetre(int argc, char** argv, ReglagesExecution& reglages) {
  std::string programme = NomProgramme(argc, argv);
  if (const std::optional<std::string> raison = RaisonSansAffichage()) {
    SignalerSansAffichage(programme, *raison);
    return kCodeSansAffichage;
  }

  std::vector<MessageRetenu> retenus;
  gMessagesRetenus = &retenus;
  gProgramme = &programme;
  gGestionnairePrecedent = qInstallMessageHandler(RetenirMessage);
  QApplication application(argc, argv);
  qInstallMessageHandler(gGestionnairePrecedent);
  for (const MessageRetenu& message : retenus) {
    qt_message_output(message.type, QMessageLogContext(nullptr, 0, nullptr, message.categorie), message.texte);
  }
  gMessagesRetenus = nullptr;
  gProgramme = nullptr;

  QApplication::setApplicationName(QString::fromUtf8(kTitreApplication));
  // The desktop entry the windows belong to, for the task bar under Wayland.
  QGuiApplication::setDesktopFileName(QStringLiteral("ch.quillon.Quillon"));
  QApplication::setWindowIcon(QIcon(IconeApplication()));
  // The windows and the standard dialogs speak the language chosen in
  // ? > Langue, else the user's when it is German or Italian, French
  // otherwise (never Qt's English).
  PreferencesQt preferences;
  ChoisirLangue(LangueAuDemarrage(preferences));
  QTranslator traductionQt;
  InstallerTraductionQt(traductionQt, LangueChoisie());

  DialoguesFichiersQt dialogues;
  BoitesMessagesQt messages;
  FinProgrammeQt fin;
  ProgrammesQt programmes;
  DocumentsQt documents;
  Services services{dialogues, messages, fin, RegistreSysteme(), programmes, documents, preferences};
  AffichageFenetre affichage(messages);
  reglages.affichage = &affichage;

  frmQuillon fenetre(reglages, services);
  affichage.DefinirParent(static_cast<QWidget*>(&fenetre));
  fenetre.show();
  // Files and folders named on the command line (Qt's own options taken
  // out) come in as a drop once the window shows.
  QStringList chemins;
  for (int k = 1; k < argc; ++k) chemins.push_back(QFile::decodeName(argv[k]));
  fenetre.Deposer(chemins);
  application.exec();
  reglages.affichage = nullptr;
  // The program ends the same way whatever happened.
  return 0;
}

}  // namespace quillon
