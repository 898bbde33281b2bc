#include "ui/win32/workbench_view.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "ui/win32/win32_util.h"

namespace quillon::win32 {
namespace {

enum : int {
  kIdTable = 2001,
  kIdProgres,
  kIdTexteProgres,
  kIdAnnuler,
  kIdCarte,
  kIdTitreRejets,
  kIdRejets,
  kIdTitreConstats,
  kIdConstats,
  kIdBoutons,  // and the four next
};

struct BoutonAtelier {
  std::string_view nom, texte;
  int largeur;  // pixels at 96 DPI
};
constexpr std::array<BoutonAtelier, 5> kBoutons = {{{"btnVueDEnsemble", kBoutonVueDEnsemble, 110},
                                                    {"btnVoirRapport", kBoutonRapport, 110},
                                                    {"btnVoirRapportLot", kBoutonRapportLot, 140},
                                                    {"btnExporter", kBoutonExporter, 90},
                                                    {"btnOuvrirDossier", kBoutonOuvrirDossier, 120}}};

// The widths of the table's columns at 96 DPI: the source, its outcome,
// then the counts.
constexpr int kLargeursColonnes[TableFichiers::kColonnes] = {280, 80, 64, 64, 64, 64, 64, 64, 64};
constexpr int kColonneIssue = static_cast<int>(TableFichiers::Colonne::Issue) - 1;

HWND Enfant(HWND parent, const wchar_t* classe, const wchar_t* texte, DWORD style, int id, DWORD etendu = 0) {
  return ::CreateWindowExW(etendu, classe, texte, WS_CHILD | style, 0, 0, 0, 0, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ::GetModuleHandleW(nullptr), nullptr);
}

void Placer(HWND controle, int x, int y, int largeur, int hauteur) {
  ::MoveWindow(controle, x, y, std::max(0, largeur), std::max(0, hauteur), TRUE);
}

}  // namespace

PanneauAtelier::~PanneauAtelier() {
  if (police_ != nullptr) ::DeleteObject(police_);
}

bool PanneauAtelier::Creer(HWND fenetre) {
  fenetre_ = fenetre;
  dpi_ = DpiFenetre(fenetre);
  constexpr DWORD kVisible = WS_VISIBLE | WS_TABSTOP;
  table_ = Enfant(fenetre, WC_LISTVIEWW, L"",
                  kVisible | LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS, kIdTable,
                  WS_EX_CLIENTEDGE);
  if (table_ == nullptr) return false;
  ListView_SetExtendedListViewStyle(table_, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
  CreerColonnes();
  progres_ = Enfant(fenetre, PROGRESS_CLASSW, L"", 0, kIdProgres);
  texteProgres_ = Enfant(fenetre, WC_STATICW, L"", SS_LEFT | SS_CENTERIMAGE, kIdTexteProgres);
  annuler_ = Enfant(fenetre, WC_BUTTONW, Large(Traduire(kBoutonAnnuler)).c_str(), WS_TABSTOP | BS_PUSHBUTTON, kIdAnnuler);
  if (!carte_.Creer(fenetre, kIdCarte)) return false;
  titreRejets_ = Enfant(fenetre, WC_STATICW, Large(TitreListe(true, nullptr)).c_str(), WS_VISIBLE | SS_LEFT, kIdTitreRejets);
  const DWORD kListe = kVisible | WS_VSCROLL | WS_HSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT;
  rejets_ = Enfant(fenetre, WC_LISTBOXW, L"", kListe, kIdRejets, WS_EX_CLIENTEDGE);
  titreConstats_ = Enfant(fenetre, WC_STATICW, Large(TitreListe(false, nullptr)).c_str(), WS_VISIBLE | SS_LEFT, kIdTitreConstats);
  constats_ = Enfant(fenetre, WC_LISTBOXW, L"", kListe, kIdConstats, WS_EX_CLIENTEDGE);
  for (std::size_t k = 0; k < kBoutons.size(); ++k) {
    boutons_[k] = Enfant(fenetre, WC_BUTTONW, Large(Traduire(kBoutons[k].texte)).c_str(), kVisible | BS_PUSHBUTTON,
                         kIdBoutons + static_cast<int>(k));
  }
  ChangerDpi(dpi_);
  Rafraichir(kPartieTable | kPartieAvancement | kPartieFichier | kPartieActions);
  return true;
}

void PanneauAtelier::CreerColonnes() {
  for (int c = 0; c < TableFichiers::kColonnes; ++c) {
    const std::wstring entete = Large(TableFichiers::Entete(c));
    LVCOLUMNW colonne{};
    colonne.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT | LVCF_SUBITEM;
    colonne.fmt = c <= kColonneIssue ? LVCFMT_LEFT : LVCFMT_RIGHT;
    colonne.cx = kLargeursColonnes[c];
    colonne.pszText = const_cast<wchar_t*>(entete.c_str());
    colonne.iSubItem = c;
    ListView_InsertColumn(table_, c, &colonne);
  }
}

void PanneauAtelier::ChangerDpi(UINT dpi) {
  dpi_ = dpi;
  carte_.DefinirDpi(dpi);
  if (police_ != nullptr) ::DeleteObject(police_);
  police_ = CreerPolice(dpi);
  for (const HWND controle : {table_, progres_, texteProgres_, annuler_, titreRejets_, rejets_, titreConstats_,
                              constats_, boutons_[0], boutons_[1], boutons_[2], boutons_[3], boutons_[4]}) {
    ::SendMessageW(controle, WM_SETFONT, reinterpret_cast<WPARAM>(police_), TRUE);
  }
  for (int c = 0; c < TableFichiers::kColonnes; ++c) {
    // At least its heading's width in the font, in every language.
    const std::wstring entete = Large(TableFichiers::Entete(c));
    const int texte = ListView_GetStringWidth(table_, entete.c_str()) + Echelle(14);
    ListView_SetColumnWidth(table_, c, std::max(Echelle(kLargeursColonnes[c]), texte));
  }
  RECT client{};
  ::GetClientRect(fenetre_, &client);
  Disposer(client.right, client.bottom);
}

// The table above; the progress row below it; then the picture, with the
// two lists on its right; the buttons along the bottom.
void PanneauAtelier::Disposer(int largeur, int hauteur) {
  const int marge = Echelle(8), ligne = Echelle(24), titre = Echelle(18);
  const int boutonsY = hauteur - marge - ligne;
  int x = marge;
  for (std::size_t k = 0; k < kBoutons.size(); ++k) {
    Placer(boutons_[k], x, boutonsY, Echelle(kBoutons[k].largeur), ligne);
    x += Echelle(kBoutons[k].largeur) + Echelle(6);
  }
  const int tableH = std::max(Echelle(80), (hauteur - 4 * marge - 2 * ligne) * 2 / 5);
  Placer(table_, marge, marge, largeur - 2 * marge, tableH);
  const int progresY = marge + tableH + marge / 2;
  const int annulerL = Echelle(90), barreL = std::min(Echelle(280), (largeur - 2 * marge) / 3);
  Placer(progres_, marge, progresY + Echelle(3), barreL, ligne - Echelle(6));
  Placer(texteProgres_, 2 * marge + barreL, progresY, largeur - 4 * marge - barreL - annulerL, ligne);
  Placer(annuler_, largeur - marge - annulerL, progresY, annulerL, ligne);
  const int basY = progresY + ligne + marge / 2, basH = boutonsY - marge - basY;
  const int listesL = std::max(Echelle(160), (largeur - 3 * marge) * 2 / 5);
  const int carteL = largeur - 3 * marge - listesL, listesX = 2 * marge + carteL;
  Placer(carte_.Handle(), marge, basY, carteL, basH);
  const int listeH = (basH - 2 * titre - marge) / 2;
  Placer(titreRejets_, listesX, basY, listesL, titre);
  Placer(rejets_, listesX, basY + titre, listesL, listeH);
  Placer(titreConstats_, listesX, basY + titre + listeH + marge, listesL, titre);
  Placer(constats_, listesX, basY + 2 * titre + listeH + marge, listesL, basH - 2 * titre - listeH - marge);
}

HWND PanneauAtelier::Bouton(std::string_view nom) const {
  for (std::size_t k = 0; k < kBoutons.size(); ++k) {
    if (kBoutons[k].nom == nom) return boutons_[k];
  }
  return nullptr;
}

void PanneauAtelier::Rafraichir(unsigned parties) {
  if (table_ == nullptr) return;
  if (parties & kPartieTable) MontrerTable();
  if (parties & kPartieAvancement) MontrerAvancement();
  if (parties & (kPartieFichier | kPartieCarte)) {
    MontrerListes();
    ::InvalidateRect(carte_.Handle(), nullptr, FALSE);
  }
  if (parties & kPartieActions) MontrerActions();
}

void PanneauAtelier::MontrerTable() {
  enMiseAJour_ = true;
  ListView_SetItemCountEx(table_, static_cast<int>(atelier_.Table().Taille()), LVSICF_NOSCROLL);
  ListView_SetItemState(table_, -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
  if (const std::optional<std::size_t> rang = atelier_.RangChoisi()) {
    const int r = static_cast<int>(*rang);
    ListView_SetItemState(table_, r, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_EnsureVisible(table_, r, FALSE);
  }
  // The column sorted by, with its arrow.
  const HWND entetes = ListView_GetHeader(table_);
  for (int c = 0; c < TableFichiers::kColonnes; ++c) {
    HDITEMW item{};
    item.mask = HDI_FORMAT;
    Header_GetItem(entetes, c, &item);
    item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
    if (static_cast<int>(atelier_.Table().Tri()) == c + 1) {
      item.fmt |= atelier_.Table().Descendant() ? HDF_SORTDOWN : HDF_SORTUP;
    }
    Header_SetItem(entetes, c, &item);
  }
  ::InvalidateRect(table_, nullptr, FALSE);
  enMiseAJour_ = false;
}

void PanneauAtelier::MontrerAvancement() {
  const Avancement& a = atelier_.EtatAvancement();
  const int montrer = a.enCours ? SW_SHOW : SW_HIDE;
  for (const HWND controle : {progres_, texteProgres_, annuler_}) ::ShowWindow(controle, montrer);
  ::SendMessageW(progres_, PBM_SETRANGE32, 0, static_cast<LPARAM>(std::max<std::size_t>(a.total, 1)));
  ::SendMessageW(progres_, PBM_SETPOS, static_cast<WPARAM>(a.faits), 0);
  ::SetWindowTextW(texteProgres_, a.enCours ? Large(a.Texte()).c_str() : L"");
}

// The lists filled again for another file; their rows selected for the
// line chosen.
void PanneauAtelier::MontrerListes() {
  const FichierMontre* montre = atelier_.Montre();
  enMiseAJour_ = true;
  if (montre != listesDe_) {
    listesDe_ = montre;
    for (const bool rejets : {true, false}) {
      const HWND liste = Liste(rejets);
      ::SendMessageW(liste, WM_SETREDRAW, FALSE, 0);
      ::SendMessageW(liste, LB_RESETCONTENT, 0, 0);
      // As wide as its longest row, for its horizontal scroll bar.
      const HDC dc = ::GetDC(liste);
      const HGDIOBJ avant = ::SelectObject(dc, police_);
      LONG largeur = 0;
      if (montre != nullptr) {
        for (const EntreeListe& e : rejets ? montre->Rejets() : montre->Constats()) {
          const std::wstring texte = Large(e.texte);
          ::SendMessageW(liste, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(texte.c_str()));
          SIZE taille{};
          ::GetTextExtentPoint32W(dc, texte.c_str(), static_cast<int>(texte.size()), &taille);
          largeur = std::max(largeur, taille.cx);
        }
      }
      ::SelectObject(dc, avant);
      ::ReleaseDC(liste, dc);
      ::SendMessageW(liste, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(largeur + Echelle(8)), 0);
      ::SendMessageW(liste, WM_SETREDRAW, TRUE, 0);
      ::InvalidateRect(liste, nullptr, TRUE);
    }
    ::SetWindowTextW(titreRejets_, Large(TitreListe(true, montre)).c_str());
    ::SetWindowTextW(titreConstats_, Large(TitreListe(false, montre)).c_str());
  }
  for (const bool rejets : {true, false}) {
    const std::optional<std::size_t> rang = atelier_.RangDansListe(rejets);
    ::SendMessageW(Liste(rejets), LB_SETCURSEL, rang ? static_cast<WPARAM>(*rang) : static_cast<WPARAM>(-1), 0);
  }
  enMiseAJour_ = false;
}

void PanneauAtelier::MontrerActions() {
  const bool fichier = atelier_.FichierActif();
  ::EnableWindow(Bouton("btnVueDEnsemble"), fichier);
  ::EnableWindow(Bouton("btnVoirRapport"), fichier);
  ::EnableWindow(Bouton("btnExporter"), fichier);
  ::EnableWindow(Bouton("btnVoirRapportLot"), atelier_.LotActif());
  ::EnableWindow(Bouton("btnOuvrirDossier"), atelier_.RangChoisi().has_value());
}

bool PanneauAtelier::Commande(int id, int code) {
  if (id == kIdAnnuler && code == BN_CLICKED) {
    atelier_.btnAnnuler_Click();
  } else if ((id == kIdRejets || id == kIdConstats) && code == LBN_SELCHANGE) {
    const LRESULT rang = ::SendMessageW(Liste(id == kIdRejets), LB_GETCURSEL, 0, 0);
    if (!enMiseAJour_ && rang != LB_ERR) atelier_.Liste_Clic(id == kIdRejets, static_cast<std::size_t>(rang));
  } else if (id >= kIdBoutons && id < kIdBoutons + static_cast<int>(kBoutons.size()) && code == BN_CLICKED) {
    switch (id - kIdBoutons) {
      case 0: atelier_.btnVueDEnsemble_Click(); break;
      case 1: atelier_.btnVoirRapport_Click(); break;
      case 2: atelier_.btnVoirRapportLot_Click(); break;
      case 3: atelier_.btnExporter_Click(); break;
      default: atelier_.btnOuvrirDossier_Click(); break;
    }
  } else {
    return id >= kIdTable && id < kIdBoutons + static_cast<int>(kBoutons.size());
  }
  return true;
}

std::optional<LRESULT> PanneauAtelier::Notifier(const NMHDR& entete) {
  if (entete.hwndFrom != table_) return std::nullopt;
  switch (entete.code) {
    case LVN_GETDISPINFOW: {
      LVITEMW& item = reinterpret_cast<NMLVDISPINFOW&>(const_cast<NMHDR&>(entete)).item;
      if ((item.mask & LVIF_TEXT) == 0 || item.pszText == nullptr || item.cchTextMax <= 0) return 0;
      const auto rang = static_cast<std::size_t>(item.iItem);
      cellule_.clear();
      if (rang < atelier_.Table().Taille()) cellule_ = Large(atelier_.Table().Cellule(rang, item.iSubItem));
      ::lstrcpynW(item.pszText, cellule_.c_str(), item.cchTextMax);
      return 0;
    }
    case LVN_ITEMCHANGED: {
      const auto& changement = reinterpret_cast<const NMLISTVIEW&>(entete);
      const bool choisie = (changement.uNewState & LVIS_SELECTED) && !(changement.uOldState & LVIS_SELECTED);
      if (!enMiseAJour_ && choisie && changement.iItem >= 0) {
        atelier_.Table_Clic(static_cast<std::size_t>(changement.iItem));
      }
      return 0;
    }
    case LVN_COLUMNCLICK:
      atelier_.Table_Entete(reinterpret_cast<const NMLISTVIEW&>(entete).iSubItem);
      return 0;
    case NM_CUSTOMDRAW: return Dessiner(reinterpret_cast<NMLVCUSTOMDRAW&>(const_cast<NMHDR&>(entete)));
    default: return std::nullopt;
  }
}

// Each outcome's cell on its colour.
LRESULT PanneauAtelier::Dessiner(NMLVCUSTOMDRAW& dessin) {
  switch (dessin.nmcd.dwDrawStage) {
    case CDDS_PREPAINT: return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT: return CDRF_NOTIFYSUBITEMDRAW;
    case CDDS_ITEMPREPAINT | CDDS_SUBITEM: {
      const auto rang = static_cast<std::size_t>(dessin.nmcd.dwItemSpec);
      if (dessin.iSubItem == kColonneIssue && rang < atelier_.Table().Taille()) {
        const uint32_t c = CouleurIssue(atelier_.Table().Ligne(rang).issue);
        dessin.clrTextBk = RGB(c >> 16 & 0xFF, c >> 8 & 0xFF, c & 0xFF);
        dessin.clrText = RGB(0, 0, 0);
      } else {
        dessin.clrTextBk = ::GetSysColor(COLOR_WINDOW);
        dessin.clrText = ::GetSysColor(COLOR_WINDOWTEXT);
      }
      return CDRF_NEWFONT;
    }
    default: return CDRF_DODEFAULT;
  }
}

}  // namespace quillon::win32
