// The two dialogs that ask for the options a conversion cannot take from the
// file names, then start it: the scale class and the theme group for a value
// file converted to a precision file, the theme group for a DC file
// converted to a value file.
//
// Each dialog exists once. Its buttons only hide it, so it keeps its choices
// from one showing to the next; closed from its title bar it is unloaded, and
// the next showing loads it anew with the initial choices. Neither button is
// the default or the cancel button: Escape does nothing, and Enter clicks a
// button only when it has the focus.
#pragma once

#include <cstdint>

#include <QDialog>

#include "conversion/run_settings.h"
#include "ui/seams.h"

class QComboBox;
class QLabel;
class QPushButton;

namespace quillon {

class DialogueOptions : public QDialog {
  Q_OBJECT

 public:
  // Shows the dialog without waiting for it, loading it first when it is not
  // loaded.
  void Afficher();
  bool Charge() const { return charge_; }
  // Sets the initial choices and fills the lists.
  virtual void Form_Load() = 0;

 public slots:
  void btnAbandonner_Click();

 protected:
  DialogueOptions(ReglagesExecution& reglages, FinProgramme& fin, QWidget* parent, const QString& titre,
                  int largeurTwips, int hauteurTwips);

  // Builds one of the dialog's controls at its place in twips.
  QLabel* NouvelleEtiquette(const char* nom, const QString& texte, int gauche, int haut, int largeur,
                            int hauteur);
  QComboBox* NouvelleListe(const char* nom, int gauche, int haut, int largeur);
  QPushButton* NouveauBouton(const char* nom, const QString& texte, int gauche, int haut, int largeur,
                             int hauteur);

  // Hides the dialog; then, once the run has returned, ends the program if
  // the run met a fatal error.
  template <typename Conversion>
  void Convertir(Conversion conversion) {
    hide();
    if (!conversion()) fin_.Terminer();
  }

  // Fills a list anew and selects its first entry.
  static void Remplir(QComboBox* liste, const QStringList& entrees);

  void closeEvent(QCloseEvent* evenement) override;
  void keyPressEvent(QKeyEvent* evenement) override;

  ReglagesExecution& reglages_;
  QPushButton* btnConvertir_ = nullptr;  // first in the tab order

 private:
  FinProgramme& fin_;
  double echelle_;
  bool charge_ = false;
};

// frmConvertirPtValEnPtPrecFiab
class frmConvertirPtValEnPtPrecFiab : public DialogueOptions {
  Q_OBJECT

 public:
  frmConvertirPtValEnPtPrecFiab(ReglagesExecution& reglages, FinProgramme& fin, QWidget* parent);

  int16_t ClasseEchelle() const { return classeEchelle_; }
  int32_t GroupeTheme() const { return groupeTheme_; }

 public slots:
  void Form_Load() override;
  void lstEchelle_Click();
  void lstTheme_Click();
  void btnConvertir_Click();

 private:
  QComboBox* lstEchelle_;
  QComboBox* lstTheme_;
  int16_t classeEchelle_ = 1;
  int32_t groupeTheme_ = 2;
};

// frmConvertirPtDCEnPtVal
class frmConvertirPtDCEnPtVal : public DialogueOptions {
  Q_OBJECT

 public:
  frmConvertirPtDCEnPtVal(ReglagesExecution& reglages, FinProgramme& fin, QWidget* parent);

  int32_t GroupeTheme() const { return groupeTheme_; }

 public slots:
  void Form_Load() override;
  void lstTheme_Click();
  void btnConvertir_Click();

 private:
  QComboBox* lstTheme_;
  int32_t groupeTheme_ = 2;
};

// The scale class of a scale text ("250" -> 1 ... "5000" -> 6), the theme
// group of a theme text ("CS" -> 2, "OD" -> 3); 0 for any other text.
int16_t ClasseEchellePourTexte(const QString& texte);
int32_t GroupeThemePourTexte(const QString& texte);

}  // namespace quillon
