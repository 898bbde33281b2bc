// The Qt windows over the fakes, driven through their widgets for the
// scenarios of window_views_test.cc, and what only Qt does.
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include "ui/qt/about_box.h"
#include "ui/qt/main_window.h"
#include "ui/qt/option_dialogs.h"
#include "ui/qt/qt_language.h"
#include "ui/qt/seams_qt.h"
#include "window_fakes.h"

namespace quillon::test {

struct PiloteQt : Pilote {
  frmQuillon fenetre{reglages, services};

  PiloteQt() {
    affichage.DefinirParent(static_cast<QWidget*>(&fenetre));
    fenetre.show();
  }
  QWidget* Forme(const std::string& nom) {  // the dialogs are the window's children
    return nom == "frmQuillon" ? &fenetre : fenetre.findChild<QWidget*>(QString::fromStdString(nom));
  }
  template <typename T = QWidget>
  T* Controle(const std::string& forme, const std::string& nom) {
    return Forme(forme)->findChild<T*>(QString::fromStdString(nom));
  }
  QAction* Entree(Commande commande) {
    for (const EntreeMenu& e : MenusQuillon()) {
      if (e.commande == commande) return fenetre.findChild<QAction*>(TexteQt(e.nom));
    }
    return nullptr;
  }

  LogiqueQuillon& Logique() override { return fenetre.Logique(); }
  void Menu(Commande commande) override { Entree(commande)->trigger(); }
  bool Actif(Commande commande) override { return Entree(commande)->isEnabled(); }
  bool Coche(Commande commande) override { return Entree(commande)->isChecked(); }
  bool Visible(const std::string& forme) override { return Forme(forme) != nullptr && Forme(forme)->isVisible(); }
  std::string Texte(const std::string& forme, const std::string& controle) override {
    QWidget* w = controle.empty() ? Forme(forme) : Controle(forme, controle);
    return (controle.empty() ? w->windowTitle() : w->property("text").toString()).toStdString();
  }
  bool AFocus(const std::string& forme, const std::string& controle) override {
    return Forme(forme)->focusWidget() == Controle(forme, controle);
  }
  void Cliquer(const std::string& forme, const std::string& bouton) override {
    QTest::mouseClick(Controle(forme, bouton), Qt::LeftButton);
  }
  void Frapper(const std::string& forme, const std::string& controle, Touche touche) override {
    Controle(forme, controle)->setFocus();
    QTest::keyClick(Controle(forme, controle), touche == Touche::Echap ? Qt::Key_Escape : Qt::Key_Return);
  }
  void Choisir(const std::string& forme, const std::string& liste, int index) override {
    Controle<QComboBox>(forme, liste)->setCurrentIndex(index);
  }
  int Selection(const std::string& forme, const std::string& liste) override {
    return Controle<QComboBox>(forme, liste)->currentIndex();
  }
  void FermerParLaBarre(const std::string& forme) override { Forme(forme)->close(); }
};

std::unique_ptr<Pilote> NouveauPilote() { return std::make_unique<PiloteQt>(); }

namespace {

// The option dialogs are modeless with no default button; the about box
// loads anew at each showing; filters as Qt's dialogs take them; no registry.
TEST(FenetresQt, CeQueSeulQtFait) {
  PiloteQt p;
  p.Commander(Commande::Ouvrir, "s.ptv", 1);
  p.Commander(Commande::EnregistrerSous, "c.ptp", 1);
  EXPECT_FALSE(p.fenetre.DialogueValPrecFiab()->isModal());
  EXPECT_FALSE(p.Controle<QPushButton>(std::string(FormulaireValPrecFiab().nom), "btnConvertir")->isDefault());
  p.Menu(Commande::APropos);
  p.fenetre.BoiteAPropos()->setWindowTitle(QString());  // undone by the next loading
  p.Frapper("frmAPropos", "cmdOK", Touche::Echap);
  EXPECT_FALSE(p.fenetre.BoiteAPropos()->Charge());
  p.Menu(Commande::APropos);
  EXPECT_EQ(p.Texte("frmAPropos", ""), "A propos de Quillon");
  EXPECT_EQ(FiltresQt("Points avec valeur (*.ptv)|*.ptv|Tous|*.*"),
            QStringList({"Points avec valeur (*.ptv)", "Tous (*.*)"}));
  std::string valeur = "ancienne";
  EXPECT_FALSE(RegistreSysteme().GetKeyValue(kHkeyLocalMachine, "SOFTWARE\\Microsoft", "PATH", valeur));
  EXPECT_EQ(valeur, "");
}

// Qt's own buttons in the program's language, French included, whatever
// the locale the tests run under.
TEST(FenetresQt, BoutonsDeQtDansLaLangue) {
  QTranslator traducteur;
  if (!InstallerTraductionQt(traducteur, Langue::Francais)) {
    GTEST_SKIP() << "Qt's translations (Debian's qt6-translations-l10n) are missing";
  }
  const std::pair<Langue, const char*> cas[] = {
      {Langue::Francais, "Annuler"}, {Langue::Allemand, "Abbrechen"}, {Langue::Italien, "Annulla"}};
  for (const auto& [langue, annuler] : cas) {
    ASSERT_TRUE(InstallerTraductionQt(traducteur, langue));
    QDialogButtonBox boutons(QDialogButtonBox::Cancel);
    EXPECT_EQ(boutons.button(QDialogButtonBox::Cancel)->text().remove(u'&').toStdString(), annuler);
  }
  QCoreApplication::removeTranslator(&traducteur);
}

}  // namespace
}  // namespace quillon::test

int main(int argc, char** argv) {
  // Headless unless told otherwise, listing the tests included.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
