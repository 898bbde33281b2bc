// The main window's workbench on Win32, in the window's client area: the
// table of the files checked (a virtual report list view, each outcome on
// its colour), the progress of a batch with Annuler, the picture of the
// file shown with its rejected lines and checks beside it, and the buttons
// for its report, the batch's, an export and its folder. Sized at the
// window's DPI; the workbench decides, this only shows and hands back.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <optional>
#include <string>

#include "ui/win32/map_view.h"
#include "ui/workbench.h"

namespace quillon::win32 {

class PanneauAtelier {
 public:
  explicit PanneauAtelier(Atelier& atelier) : atelier_(atelier), carte_(atelier) {}
  ~PanneauAtelier();
  PanneauAtelier(const PanneauAtelier&) = delete;
  PanneauAtelier& operator=(const PanneauAtelier&) = delete;

  // Creates the controls as children of `fenetre`, at its DPI.
  bool Creer(HWND fenetre);
  // Places them in a client area of `largeur` x `hauteur` pixels.
  void Disposer(int largeur, int hauteur);
  // The window went to a monitor of another DPI: the type, the columns and
  // the places again.
  void ChangerDpi(UINT dpi);
  UINT Dpi() const { return dpi_; }
  // Pixels at 96 DPI, at the panel's DPI.
  int Echelle(int pixels) const { return ::MulDiv(pixels, static_cast<int>(dpi_), 96); }

  void Rafraichir(unsigned parties);
  // A control's command or notification; false when it is none of the
  // panel's.
  bool Commande(int id, int code);
  std::optional<LRESULT> Notifier(const NMHDR& entete);

  // The controls, for the tests.
  HWND Table() const { return table_; }
  HWND Progression() const { return progres_; }
  HWND TexteProgression() const { return texteProgres_; }
  HWND Annuler() const { return annuler_; }
  HWND Carte() const { return carte_.Handle(); }
  HWND Liste(bool rejets) const { return rejets ? rejets_ : constats_; }
  // "btnVueDEnsemble", "btnVoirRapport", "btnVoirRapportLot", "btnExporter",
  // "btnOuvrirDossier"; null for another name.
  HWND Bouton(std::string_view nom) const;
  const CarteWin32& VueCarte() const { return carte_; }

 private:
  void CreerColonnes();
  void MontrerTable();
  void MontrerAvancement();
  void MontrerListes();
  void MontrerActions();
  LRESULT Dessiner(NMLVCUSTOMDRAW& dessin);

  Atelier& atelier_;
  CarteWin32 carte_;
  HWND fenetre_ = nullptr;
  HWND table_ = nullptr, progres_ = nullptr, texteProgres_ = nullptr, annuler_ = nullptr;
  HWND titreRejets_ = nullptr, rejets_ = nullptr, titreConstats_ = nullptr, constats_ = nullptr;
  HWND boutons_[5] = {};
  HFONT police_ = nullptr;
  UINT dpi_ = 96;
  bool enMiseAJour_ = false;  // the view's own selection changes are not the user's clicks
  const FichierMontre* listesDe_ = nullptr;
  std::wstring cellule_;
};

}  // namespace quillon::win32
