#include "ui/win32/main_window.h"

#include "ui/win32/win32_util.h"

namespace quillon::win32 {
namespace {

constexpr DWORD kStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;

// The menu bar of the table: its top-level menus, their entries and
// separators, in order; no access key, no shortcut.
HMENU CreerMenus() {
  const HMENU barre = ::CreateMenu();
  HMENU menu = nullptr;
  for (const EntreeMenu& entree : MenusQuillon()) {
    if (entree.niveau == 0) {
      menu = ::CreatePopupMenu();
      ::AppendMenuW(barre, MF_POPUP | MF_STRING, reinterpret_cast<UINT_PTR>(menu), Large(entree.texte).c_str());
    } else if (entree.texte == "-") {
      ::AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    } else {
      ::AppendMenuW(menu, MF_STRING | (entree.actifAuDepart ? MF_ENABLED : MF_GRAYED),
                    static_cast<UINT_PTR>(IdCommande(entree.commande)), Large(entree.texte).c_str());
    }
  }
  return barre;
}

}  // namespace

FenetreQuillonWin32::FenetreQuillonWin32(ReglagesExecution& reglages, Services& services)
    : services_(services), logique_(reglages, services, *this) {}

FenetreQuillonWin32::~FenetreQuillonWin32() {
  // The dialogs go before the window that owns them.
  valPrecFiab_.reset();
  dcVal_.reset();
  aPropos_.reset();
}

bool FenetreQuillonWin32::Creer() {
  if (!FenetreWin32::Creer(kStyle, 0, Large(kTitreQuillon).c_str(), nullptr, CreerMenus())) return false;
  Dimensionner(DpiFenetre(Handle()));
  return true;
}

void FenetreQuillonWin32::Dimensionner(UINT dpi) {
  const SIZE taille = TailleFenetre(kLargeurQuillon, kHauteurQuillon, kStyle, 0, true, dpi);
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

bool FenetreQuillonWin32::MontrerDialogueLot(LogiqueDialogueLot&) { return false; }

void FenetreQuillonWin32::Rafraichir(unsigned) {}

void FenetreQuillonWin32::Reveiller() { ::PostMessageW(Handle(), kMessageReveil, 0, 0); }

LRESULT FenetreQuillonWin32::Traiter(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_COMMAND:
      // A menu entry: its identifier is its command's.
      if (HIWORD(wparam) == 0 && lparam == 0) {
        const int id = LOWORD(wparam);
        for (const EntreeMenu& entree : MenusQuillon()) {
          if (entree.niveau == 1 && entree.texte != "-" && IdCommande(entree.commande) == id) {
            // A disabled entry is never chosen; a message is taken the same way.
            const UINT etat = ::GetMenuState(::GetMenu(Handle()), static_cast<UINT>(id), MF_BYCOMMAND);
            if ((etat & (MF_GRAYED | MF_DISABLED)) == 0) logique_.Commander(entree.commande);
            break;
          }
        }
      }
      return 0;
    case WM_CLOSE:
      if (logique_.Form_QueryUnload()) logique_.Form_Unload();
      return 0;
    case kMessageReveil: logique_.Travail().TraiterEvenements(); return 0;
    case WM_DPICHANGED: AppliquerRectPropose(Handle(), lparam); return 0;
    default: return FenetreWin32::Traiter(message, wparam, lparam);
  }
}

}  // namespace quillon::win32
