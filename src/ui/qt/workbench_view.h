// The main window's workbench on Qt: the table of the files checked on top;
// below it the picture of the file selected beside its rejected lines and
// checks; the progress of a batch with Annuler, and the file's buttons.
// Everything it shows comes from the workbench (Atelier) when told to
// (Rafraichir); every click goes back to it.
#pragma once

#include <functional>

#include <QWidget>

class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;
class QSplitter;
class QTableView;

namespace quillon {

class Atelier;
class CarteQt;
class ModeleFichiers;
class FichierMontre;

class VueAtelierQt : public QWidget {
  Q_OBJECT

 public:
  VueAtelierQt(Atelier& atelier, QWidget* parent);

  // Shows again the parts named (a mask of Partie).
  void Rafraichir(unsigned parties);

  QTableView* Table() const { return table_; }
  CarteQt* Carte() const { return carte_; }
  QListWidget* Liste(bool rejets) const { return rejets ? rejets_ : constats_; }

 private:
  QWidget* CreerListes();
  QWidget* CreerBoutons();
  QPushButton* Bouton(const char* nom, const QString& texte, std::function<void()> clic);
  void MontrerTable();
  void MontrerAvancement();
  void MontrerFichier();
  void MontrerChoixDansListes();
  void MontrerActions();

  Atelier& atelier_;
  ModeleFichiers* modele_ = nullptr;
  QTableView* table_ = nullptr;
  CarteQt* carte_ = nullptr;
  QLabel* lblRejets_ = nullptr;
  QLabel* lblConstats_ = nullptr;
  QListWidget* rejets_ = nullptr;
  QListWidget* constats_ = nullptr;
  QWidget* barreAvancement_ = nullptr;
  QProgressBar* avancement_ = nullptr;
  QPushButton *btnVueDEnsemble_ = nullptr, *btnVoirRapport_ = nullptr, *btnVoirRapportLot_ = nullptr,
              *btnExporter_ = nullptr, *btnOuvrirDossier_ = nullptr;
  const FichierMontre* montre_ = nullptr;  // the file whose lists are shown
  bool enMiseAJour_ = false;               // selections set by the view, not the user
};

}  // namespace quillon
