#include "ui/win32/main_window.h"

#include <commctrl.h>
#include <commdlg.h>
#include <shellapi.h>
#include <windowsx.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "ui/win32/win32_util.h"

namespace quillon::win32 {
namespace {

constexpr DWORD kStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
// The client area with the workbench, in twips: 960 x 660 pixels at 96 DPI;
// no smaller than 640 x 420.
constexpr int kLargeurAtelier = 14400, kHauteurAtelier = 9900;
constexpr int kLargeurMin = 9600, kHauteurMin = 6300;

// The menu bar of the table: its top-level menus, their entries and
// separators, in order; no access key, no shortcut.
HMENU CreerMenus(Commande langue) {
  const HMENU barre = ::CreateMenu();
  HMENU menu = nullptr, sousMenu = nullptr;
  for (const EntreeMenu& entree : MenusQuillon()) {
    if (entree.niveau == 0) {
      menu = ::CreatePopupMenu();
      ::AppendMenuW(barre, MF_POPUP | MF_STRING, reinterpret_cast<UINT_PTR>(menu), Large(entree.texte).c_str());
    } else if (entree.texte == "-") {
      ::AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    } else if (entree.niveau == 1 && entree.commande == Commande::Aucune) {
      sousMenu = ::CreatePopupMenu();
      ::AppendMenuW(menu, MF_POPUP | MF_STRING, reinterpret_cast<UINT_PTR>(sousMenu), Large(entree.texte).c_str());
    } else {
      ::AppendMenuW(entree.niveau == 2 ? sousMenu : menu,
                    MF_STRING | (entree.actifAuDepart ? MF_ENABLED : MF_GRAYED) |
                        (entree.niveau == 2 && entree.commande == langue ? MF_CHECKED : MF_UNCHECKED),
                    static_cast<UINT_PTR>(IdCommande(entree.commande)), Large(entree.texte).c_str());
    }
  }
  return barre;
}

}  // namespace

FenetreQuillonWin32::FenetreQuillonWin32(ReglagesExecution& reglages, Services& services)
    : services_(services), logique_(reglages, services, *this), panneau_(logique_.Travail()) {}

FenetreQuillonWin32::~FenetreQuillonWin32() {
  // The dialogs go before the window that owns them.
  valPrecFiab_.reset();
  dcVal_.reset();
  aPropos_.reset();
  if (modeImprimante_ != nullptr) ::GlobalFree(modeImprimante_);
  if (nomsImprimante_ != nullptr) ::GlobalFree(nomsImprimante_);
}

bool FenetreQuillonWin32::Creer() {
  INITCOMMONCONTROLSEX controles{sizeof controles,
                                  ICC_STANDARD_CLASSES | ICC_LISTVIEW_CLASSES | ICC_PROGRESS_CLASS | ICC_BAR_CLASSES};
  ::InitCommonControlsEx(&controles);
  if (!FenetreWin32::Creer(kStyle, WS_EX_ACCEPTFILES, Large(Traduire(kTitreQuillon)).c_str(), nullptr,
                           CreerMenus(CommandeLangue(services_.preferences)))) {
    return false;
  }
  ::DragAcceptFiles(Handle(), TRUE);
  if (!panneau_.Creer(Handle())) return false;
  Dimensionner(DpiFenetre(Handle()));
  return true;
}

void FenetreQuillonWin32::Dimensionner(UINT dpi) {
  const SIZE taille = TailleFenetre(std::max(kLargeurQuillon, kLargeurAtelier), std::max(kHauteurQuillon, kHauteurAtelier),
                                    kStyle, 0, true, dpi);
  ::SetWindowPos(Handle(), nullptr, 0, 0, taille.cx, taille.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

DialogueOptionsWin32* FenetreQuillonWin32::VueDialogue(quillon::Dialogue genre) const {
  return genre == quillon::Dialogue::ValPrecFiab ? valPrecFiab_.get() : dcVal_.get();
}

void FenetreQuillonWin32::ActiverMenusFichier(bool actifs) {
  const HMENU menu = ::GetMenu(Handle());
  for (const Commande commande : {Commande::Fermer, Commande::EnregistrerSous}) {
    ::EnableMenuItem(menu, static_cast<UINT>(IdCommande(commande)), MF_BYCOMMAND | (actifs ? MF_ENABLED : MF_GRAYED));
  }
}

void FenetreQuillonWin32::MontrerDialogue(LogiqueOptions& dialogue) {
  auto& vue = dialogue.Genre() == quillon::Dialogue::ValPrecFiab ? valPrecFiab_ : dcVal_;
  if (vue == nullptr) vue = std::make_unique<DialogueOptionsWin32>(dialogue, Handle());
  vue->Afficher();
}

void FenetreQuillonWin32::MontrerAPropos() {
  if (aPropos_ == nullptr) aPropos_ = std::make_unique<AProposWin32>(services_, Handle());
  aPropos_->Afficher();
}

bool FenetreQuillonWin32::MontrerDialogueLot(LogiqueDialogueLot& logique) {
  DialogueLotWin32 dialogue(logique, Handle());
  dialogueLot_ = &dialogue;
  const bool controler = dialogue.MontrerModal();
  dialogueLot_ = nullptr;
  return controler;
}

void FenetreQuillonWin32::Rafraichir(unsigned parties) {
  panneau_.Rafraichir(parties);
  if ((parties & kPartieActions) == 0) return;
  const UINT etat = MF_BYCOMMAND | (logique_.Travail().FichierActif() ? MF_ENABLED : MF_GRAYED);
  for (const Commande commande : {Commande::MettreEnPage, Commande::Imprimer}) {
    ::EnableMenuItem(::GetMenu(Handle()), static_cast<UINT>(IdCommande(commande)), etat);
  }
}

// The page set-up dialog, in millimetres; its printer, paper and margins
// are kept for the next print.
void FenetreQuillonWin32::MettreEnPage() {
  PAGESETUPDLGW dialogue{};
  dialogue.lStructSize = sizeof dialogue;
  dialogue.hwndOwner = Handle();
  dialogue.hDevMode = modeImprimante_;
  dialogue.hDevNames = nomsImprimante_;
  dialogue.Flags = PSD_INHUNDREDTHSOFMILLIMETERS | PSD_MARGINS;
  dialogue.rtMargin = marges_;
  if (!::PageSetupDlgW(&dialogue)) return;
  modeImprimante_ = dialogue.hDevMode;
  nomsImprimante_ = dialogue.hDevNames;
  marges_ = dialogue.rtMargin;
}

// The print dialog, then the pages on the printer chosen. A printer that
// fails tells the user through the spooler's own messages.
void FenetreQuillonWin32::Imprimer() {
  const Atelier& atelier = logique_.Travail();
  const std::optional<std::size_t> rang = atelier.RangChoisi();
  if (!atelier.FichierActif() || !rang) return;
  PRINTDLGW dialogue{};
  dialogue.lStructSize = sizeof dialogue;
  dialogue.hwndOwner = Handle();
  dialogue.hDevMode = modeImprimante_;
  dialogue.hDevNames = nomsImprimante_;
  dialogue.Flags = PD_RETURNDC | PD_NOPAGENUMS | PD_NOSELECTION | PD_USEDEVMODECOPIESANDCOLLATE;
  if (!::PrintDlgW(&dialogue)) return;
  modeImprimante_ = dialogue.hDevMode;
  nomsImprimante_ = dialogue.hDevNames;
  if (dialogue.hDC == nullptr) return;
  const std::string& source = atelier.Table().Ligne(*rang).source;
  FeuillesImprimante feuilles(dialogue.hDC, Large(source.substr(source.find_last_of("/\\") + 1)));
  feuilles.Terminer(ImprimerSur(feuilles, ZoneImprimable(dialogue.hDC, marges_)));
  ::DeleteDC(dialogue.hDC);
}

bool FenetreQuillonWin32::ImprimerSur(Feuilles& feuilles, const ZoneMm& zone) {
  const Atelier& atelier = logique_.Travail();
  const std::optional<std::size_t> rang = atelier.RangChoisi();
  if (!atelier.FichierActif() || !rang || atelier.Montre() == nullptr) return false;
  return PeindrePages(feuilles,
                      MettreEnPages(atelier.Table().Ligne(*rang), *atelier.Montre(), atelier.Vue(),
                                    atelier.LigneChoisie(), zone.largeur, zone.hauteur),
                      zone);
}

void FenetreQuillonWin32::DeposerAuDemarrage(std::vector<std::string> chemins) {
  if (chemins.empty()) return;
  depotDemarrage_ = std::move(chemins);
  ::PostMessageW(Handle(), kMessageDepot, 0, 0);
}

// The names dropped, in UTF-8; the drop released before the batch dialog
// shows.
void FenetreQuillonWin32::Deposer(HDROP depot) {
  std::vector<std::string> chemins;
  const UINT nombre = ::DragQueryFileW(depot, 0xFFFFFFFF, nullptr, 0);
  for (UINT i = 0; i < nombre; ++i) {
    std::wstring nom(::DragQueryFileW(depot, i, nullptr, 0) + 1, L'\0');
    nom.resize(::DragQueryFileW(depot, i, nom.data(), static_cast<UINT>(nom.size())));
    if (!nom.empty()) chemins.push_back(Utf8(nom));
  }
  ::DragFinish(depot);
  if (chemins.empty()) return;
  ::SetForegroundWindow(Handle());
  logique_.Deposer(chemins);
}

LRESULT FenetreQuillonWin32::CommandeRecue(WPARAM wparam, LPARAM lparam) {
  if (lparam != 0) {
    panneau_.Commande(LOWORD(wparam), HIWORD(wparam));
    return 0;
  }
  // A menu entry: its identifier is its command's.
  if (HIWORD(wparam) != 0) return 0;
  const int id = LOWORD(wparam);
  for (const EntreeMenu& entree : MenusQuillon()) {
    if (entree.niveau >= 1 && entree.commande != Commande::Aucune && IdCommande(entree.commande) == id) {
      // A disabled entry is never chosen; a message is taken the same way.
      const UINT etat = ::GetMenuState(::GetMenu(Handle()), static_cast<UINT>(id), MF_BYCOMMAND);
      if ((etat & (MF_GRAYED | MF_DISABLED)) != 0) break;
      // Printing is the view's: the logic only makes the pages.
      if (entree.commande == Commande::MettreEnPage) {
        MettreEnPage();
      } else if (entree.commande == Commande::Imprimer) {
        Imprimer();
      } else {
        logique_.Commander(entree.commande);
      }
      if (entree.niveau == 2) CocherLangue();
      break;
    }
  }
  return 0;
}

// The languages' entries: the one kept checked, the others not.
void FenetreQuillonWin32::CocherLangue() {
  const Commande cochee = CommandeLangue(services_.preferences);
  for (const EntreeMenu& entree : MenusQuillon()) {
    if (entree.niveau != 2) continue;
    ::CheckMenuItem(::GetMenu(Handle()), static_cast<UINT>(IdCommande(entree.commande)),
                    MF_BYCOMMAND | (entree.commande == cochee ? MF_CHECKED : MF_UNCHECKED));
  }
}

void FenetreQuillonWin32::Reveiller() { ::PostMessageW(Handle(), kMessageReveil, 0, 0); }

LRESULT FenetreQuillonWin32::Traiter(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_COMMAND: return CommandeRecue(wparam, lparam);
    case WM_NOTIFY: {
      const std::optional<LRESULT> resultat = panneau_.Notifier(*reinterpret_cast<const NMHDR*>(lparam));
      return resultat ? *resultat : FenetreWin32::Traiter(message, wparam, lparam);
    }
    case WM_SIZE: panneau_.Disposer(LOWORD(lparam), HIWORD(lparam)); return 0;
    case WM_GETMINMAXINFO: {
      const SIZE minimum = TailleFenetre(kLargeurMin, kHauteurMin, kStyle, 0, true, panneau_.Dpi());
      reinterpret_cast<MINMAXINFO*>(lparam)->ptMinTrackSize = POINT{minimum.cx, minimum.cy};
      return 0;
    }
    case WM_MOUSEWHEEL: {
      // The wheel over the picture zooms it, wherever the focus is.
      RECT carte{};
      ::GetWindowRect(panneau_.Carte(), &carte);
      const POINT point{GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)};
      if (::PtInRect(&carte, point)) return ::SendMessageW(panneau_.Carte(), message, wparam, lparam);
      return FenetreWin32::Traiter(message, wparam, lparam);
    }
    case WM_DROPFILES: Deposer(reinterpret_cast<HDROP>(wparam)); return 0;
    case kMessageDepot: logique_.Deposer(std::exchange(depotDemarrage_, {})); return 0;
    case WM_CLOSE:
      if (logique_.Form_QueryUnload()) logique_.Form_Unload();
      return 0;
    case kMessageReveil: logique_.Travail().TraiterEvenements(); return 0;
    case WM_DPICHANGED:
      panneau_.ChangerDpi(HIWORD(wparam));
      AppliquerRectPropose(Handle(), lparam);
      return 0;
    default: return FenetreWin32::Traiter(message, wparam, lparam);
  }
}

}  // namespace quillon::win32
