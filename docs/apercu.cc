// Shows one window of the windowed front end by name, for taking its
// picture: quillon_apercu principale|val-prec|dc-val|a-propos
// or the main window after a folder was checked: quillon_apercu atelier FOLDER
// (the batch dialog answered with its choices as they stand: nothing but the
// logs is written), or writes the application's icon as a PNG file:
// quillon_apercu icone FILE
// The main window is the real one; a dialog is shown over it as the main
// window shows it, and nothing is converted until one of its buttons is used.
#include <cstdio>
#include <cstring>

#include <QApplication>
#include <QPushButton>
#include <QTimer>
#include <QTranslator>

#include "conversion/run_settings.h"
#include "ui/qt/about_box.h"
#include "ui/qt/app_icon.h"
#include "ui/qt/batch_dialog_qt.h"
#include "ui/qt/main_window.h"
#include "ui/qt/option_dialogs.h"
#include "ui/qt/qt_language.h"
#include "ui/registry.h"
#include "ui/qt/seams_qt.h"
#include "ui/window_logic.h"

// Choices that last while the picture is taken: the user's are left alone.
struct PreferencesDApercu : quillon::Preferences {
  std::string Lire(const std::string&) override { return {}; }
  void Ecrire(const std::string&, const std::string&) override {}
};

int main(int argc, char** argv) {
  const char* nom = argc > 1 ? argv[1] : "";
  QApplication application(argc, argv);
  if (std::strcmp(nom, "icone") == 0 && argc > 2) return quillon::IconeApplication().save(argv[2], "PNG") ? 0 : 1;
  quillon::ReglagesExecution reglages;
  quillon::InitialiserTables(reglages);
  // In the user's language (LANGUAGE=de for a German picture).
  quillon::ChoisirLangue(quillon::LangueDuSysteme());
  QTranslator traductionQt;
  quillon::InstallerTraductionQt(traductionQt, quillon::LangueChoisie());

  quillon::DialoguesFichiersQt dialogues;
  quillon::BoitesMessagesQt messages;
  quillon::FinProgrammeQt fin;
  quillon::ProgrammesQt programmes;
  quillon::DocumentsQt documents;
  PreferencesDApercu preferences;
  quillon::Services services{dialogues, messages, fin, quillon::RegistreSysteme(), programmes, documents,
                             preferences};
  quillon::AffichageFenetre affichage(messages);
  reglages.affichage = &affichage;
  quillon::frmQuillon fenetre(reglages, services);
  affichage.DefinirParent(static_cast<QWidget*>(&fenetre));

  fenetre.show();
  if (std::strcmp(nom, "principale") == 0) {
  } else if (std::strcmp(nom, "val-prec") == 0) {
    (new quillon::frmConvertirPtValEnPtPrecFiab(fenetre.Logique().DialogueValPrecFiab(), &fenetre))->Afficher();
  } else if (std::strcmp(nom, "dc-val") == 0) {
    (new quillon::frmConvertirPtDCEnPtVal(fenetre.Logique().DialogueDCVal(), &fenetre))->Afficher();
  } else if (std::strcmp(nom, "a-propos") == 0) {
    (new quillon::frmAPropos(services, &fenetre))->Afficher();
  } else if (std::strcmp(nom, "atelier") == 0 && argc > 2) {
    auto* reponse = new QTimer(&fenetre);
    QObject::connect(reponse, &QTimer::timeout, [&fenetre, reponse] {
      if (auto* lot = fenetre.findChild<quillon::frmControlerLot*>(); lot != nullptr && lot->isVisible()) {
        reponse->stop();
        lot->findChild<QPushButton*>(QStringLiteral("btnControler"))->click();
      }
    });
    reponse->start(20);
    fenetre.Deposer({QString::fromLocal8Bit(argv[2])});
  } else {
    std::fputs("usage: quillon_apercu principale|val-prec|dc-val|a-propos | atelier FOLDER | icone FILE\n", stderr);
    return 2;
  }
  return application.exec();
}
