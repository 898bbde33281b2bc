// The main window's workbench on Win32 over the fakes, created for real and
// driven by window messages: a folder dropped (a drop built as Explorer
// builds it), named on the command line or picked from the menu, the batch
// dialog answered, the table filled; the file shown, its lists, its picture
// read back, and the clicks, wheel and drags on it. Runs under wine (make
// test-windows).
#include <windows.h>
#include <commctrl.h>
#include <shlobj.h>
#include <windowsx.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <thread>

#include "ui/win32/main_window.h"
#include "ui/win32/printing.h"
#include "ui/win32/win32_util.h"
#include "window_fakes.h"

namespace fs = std::filesystem;

namespace quillon::test {
namespace {

// The dialog's answer, run by a timer once the batch dialog shows (its own
// message loop dispatches it).
std::function<void(win32::DialogueLotWin32&)> reponse;
win32::FenetreQuillonWin32* fenetreEnCours = nullptr;

void CALLBACK Minuterie(HWND, UINT, UINT_PTR id, DWORD) {
  win32::DialogueLotWin32* dialogue = fenetreEnCours->DialogueLot();
  if (dialogue == nullptr) return;  // not yet: the timer runs again
  ::KillTimer(nullptr, id);
  auto agir = std::move(reponse);
  reponse = nullptr;
  if (agir) agir(*dialogue);
}

// A drop as Explorer hands it: DROPFILES, then the wide names, each ended by
// a NUL, the whole by a second one.
HDROP Depot(const std::vector<std::wstring>& noms) {
  std::size_t caracteres = 1;
  for (const std::wstring& nom : noms) caracteres += nom.size() + 1;
  const HGLOBAL memoire = ::GlobalAlloc(GHND, sizeof(DROPFILES) + caracteres * sizeof(wchar_t));
  auto* depot = static_cast<DROPFILES*>(::GlobalLock(memoire));
  depot->pFiles = sizeof(DROPFILES);
  depot->fWide = TRUE;
  auto* texte = reinterpret_cast<wchar_t*>(depot + 1);
  for (const std::wstring& nom : noms) {
    std::copy(nom.begin(), nom.end(), texte);
    texte += nom.size() + 1;
  }
  ::GlobalUnlock(memoire);
  return static_cast<HDROP>(memoire);
}

struct Banc : FauxServices {
  DossierCourant dossier;
  AffichageFenetre affichage{boites};
  ReglagesExecution reglages;
  std::unique_ptr<win32::FenetreQuillonWin32> fenetre;

  Banc() {
    InitialiserTables(reglages);
    reglages.affichage = &affichage;
    fenetre = std::make_unique<win32::FenetreQuillonWin32>(reglages, services);
    EXPECT_TRUE(fenetre->Creer());
    fenetreEnCours = fenetre.get();
    ::ShowWindow(fenetre->Handle(), SW_SHOWNORMAL);
    fs::create_directory("livraison");
    EcrireFichier("livraison/f1.ptv", Points(3));
    EcrireFichier("livraison/f2.ptv", Points(2) + kRejetee);
  }
  Atelier& Travail() { return fenetre->Logique().Travail(); }
  const win32::PanneauAtelier& P() { return fenetre->Panneau(); }

  // The window's messages until the batch has ended and the file selected
  // is read.
  void Attendre() {
    const auto fin = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (std::chrono::steady_clock::now() < fin) {
      MSG message;
      while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
      }
      const bool lu = !Travail().RangChoisi() || Travail().Montre() != nullptr;
      if (reponse == nullptr && !Travail().EtatAvancement().enCours && lu) return;
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    FAIL() << "the batch never ended";
  }
  std::string Cellule(int rang, int colonne) {
    wchar_t texte[512] = {};
    ListView_GetItemText(P().Table(), rang, colonne, texte, 512);
    return Utf8(texte);
  }
  std::string Ligne(bool rejets, int rang) {
    const HWND liste = P().Liste(rejets);
    std::wstring texte(static_cast<std::size_t>(::SendMessageW(liste, LB_GETTEXTLEN, rang, 0)) + 1, L'\0');
    texte.resize(static_cast<std::size_t>(::SendMessageW(liste, LB_GETTEXT, rang, reinterpret_cast<LPARAM>(texte.data()))));
    return Utf8(texte);
  }
  // The picture as painted, read back: its pixels of the colour `rgb`.
  int Pixels(uint32_t rgb) {
    RECT client{};
    ::GetClientRect(P().Carte(), &client);
    BITMAPINFO infos{};
    infos.bmiHeader = {sizeof infos.bmiHeader, client.right, -client.bottom, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HDC dc = ::CreateCompatibleDC(nullptr);
    const HBITMAP image = ::CreateDIBSection(dc, &infos, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ avant = ::SelectObject(dc, image);
    ::SendMessageW(P().Carte(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
    ::GdiFlush();
    int n = 0;
    const auto* pixels = static_cast<const uint32_t*>(bits);
    for (long k = 0; k < client.right * client.bottom; ++k) n += (pixels[k] & 0xFFFFFF) == rgb;
    ::SelectObject(dc, avant);
    ::DeleteObject(image);
    ::DeleteDC(dc);
    return n;
  }
  void Clic(int x, int y) {
    ::SendMessageW(P().Carte(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    ::SendMessageW(P().Carte(), WM_LBUTTONUP, 0, MAKELPARAM(x, y));
  }
  // Where the point of a line is drawn.
  POINT Point(uint32_t ligne) {
    const PlanCarte& plan = Travail().Montre()->Plan();
    const PlanCarte::Point& p = plan.Points()[*plan.PointDeLaLigne(ligne)];
    return POINT{static_cast<LONG>(std::lround(Travail().Vue().Px(p.y))),
                 static_cast<LONG>(std::lround(Travail().Vue().Py(p.x)))};
  }
};

// Each way in reaches the batch dialog, whose controls stand as its choices
// and whose boxes reach them; the batch's files fill the table, problems
// first, each outcome in words.
TEST(AtelierWin32, DepotLigneDeCommandeEtMenu) {
  enum class Voie { Depot, LigneDeCommande, Menu };
  for (const Voie voie : {Voie::Depot, Voie::LigneDeCommande, Voie::Menu}) {
    SCOPED_TRACE(static_cast<int>(voie));
    Banc b;
    const std::string dossier = fs::absolute("livraison").string();
    bool vu = false;
    reponse = [&](win32::DialogueLotWin32& d) {
      vu = !::IsWindowEnabled(b.fenetre->Handle()) && ::IsWindowVisible(d.Handle());
      wchar_t texte[128] = {};
      ::GetWindowTextW(d.Controle("lstAction"), texte, 128);
      EXPECT_EQ(Utf8(texte), "Contrôler seulement");
      EXPECT_EQ(::SendMessageW(d.Controle("chkSousDossiers"), BM_GETCHECK, 0, 0), BST_CHECKED);
      ::SendMessageW(d.Controle("chkSousDossiers"), BM_CLICK, 0, 0);
      ::SendMessageW(d.Controle("chkCsv"), BM_CLICK, 0, 0);
      ::SendMessageW(d.Controle("btnControler"), BM_CLICK, 0, 0);
    };
    ::SetTimer(nullptr, 0, 20, Minuterie);
    switch (voie) {
      case Voie::Depot:
        ::PostMessageW(b.fenetre->Handle(), WM_DROPFILES, reinterpret_cast<WPARAM>(Depot({Large(dossier)})), 0);
        break;
      case Voie::LigneDeCommande: b.fenetre->DeposerAuDemarrage({dossier}); break;
      case Voie::Menu:
        b.dialogues.dossiers.push_back(dossier);
        ::PostMessageW(b.fenetre->Handle(), WM_COMMAND, win32::IdCommande(Commande::ControlerDossier), 0);
        break;
    }
    b.Attendre();
    EXPECT_TRUE(vu && ::IsWindowEnabled(b.fenetre->Handle()));
    EXPECT_FALSE(b.Travail().Choix().recursif);
    EXPECT_TRUE(b.Travail().Choix().exports[1]);
    ASSERT_EQ(ListView_GetItemCount(b.P().Table()), 2);
    EXPECT_TRUE(b.Cellule(0, 0).ends_with("f2.ptv")) << b.Cellule(0, 0);
    EXPECT_EQ(b.Cellule(0, 1), "rejets");
    EXPECT_EQ(b.Cellule(0, 4), "1");
    EXPECT_TRUE(b.Cellule(1, 0).ends_with("f1.ptv"));
    EXPECT_EQ(b.Cellule(1, 1), "converti");
    EXPECT_TRUE(fs::exists("livraison/f2.csv"));
    EXPECT_FALSE(::IsWindowVisible(b.P().Progression()));
  }
}

// Abandonner runs nothing.
TEST(AtelierWin32, DialogueAbandonne) {
  Banc b;
  reponse = [](win32::DialogueLotWin32& d) { ::SendMessageW(d.Controle("btnAbandonner"), BM_CLICK, 0, 0); };
  ::SetTimer(nullptr, 0, 20, Minuterie);
  ::PostMessageW(b.fenetre->Handle(), WM_DROPFILES,
                 reinterpret_cast<WPARAM>(Depot({Large(fs::absolute("livraison/f1.ptv").string())})), 0);
  b.Attendre();
  EXPECT_EQ(ListView_GetItemCount(b.P().Table()), 0);
  EXPECT_FALSE(fs::exists("livraison/f1.ptv.log"));
}

// The first file with problems is shown: its rejected line in its list,
// red in its picture; the other file clicked in the table shows none. A
// point clicked selects its row; a row clicked chooses its line; the wheel
// zooms, a drag pans, the pointer over a point tells its line; a heading
// sorts; the buttons follow the file shown; a new DPI sizes the columns.
TEST(AtelierWin32, FichierMontre) {
  Banc b;
  reponse = [](win32::DialogueLotWin32& d) { ::SendMessageW(d.Controle("btnControler"), BM_CLICK, 0, 0); };
  ::SetTimer(nullptr, 0, 20, Minuterie);
  ::SendMessageW(b.fenetre->Handle(), WM_DROPFILES,
                 reinterpret_cast<WPARAM>(Depot({Large(fs::absolute("livraison").string())})), 0);
  b.Attendre();
  ASSERT_NE(b.Travail().Montre(), nullptr);
  EXPECT_EQ(ListView_GetNextItem(b.P().Table(), -1, LVNI_SELECTED), 0);
  ASSERT_EQ(::SendMessageW(b.P().Liste(true), LB_GETCOUNT, 0, 0), 1);
  EXPECT_EQ(b.Ligne(true, 0), b.Travail().Montre()->Rejets()[0].texte);
  EXPECT_GT(b.Pixels(0xFF0000), 0) << "the rejected point, red";
  for (const char* nom : {"btnVueDEnsemble", "btnVoirRapport", "btnVoirRapportLot", "btnExporter", "btnOuvrirDossier"}) {
    EXPECT_TRUE(::IsWindowEnabled(b.P().Bouton(nom))) << nom;
  }

  ListView_SetItemState(b.P().Table(), 1, LVIS_SELECTED, LVIS_SELECTED);
  b.Attendre();
  EXPECT_EQ(b.Travail().RangChoisi(), 1u);
  EXPECT_EQ(::SendMessageW(b.P().Liste(true), LB_GETCOUNT, 0, 0), 0);
  EXPECT_EQ(b.Pixels(0xFF0000), 0);
  ListView_SetItemState(b.P().Table(), 0, LVIS_SELECTED, LVIS_SELECTED);
  b.Attendre();

  const uint32_t rejetee = b.Travail().Montre()->Rejets()[0].ligne;
  EXPECT_EQ(::SendMessageW(b.P().Liste(true), LB_GETCURSEL, 0, 0), LB_ERR);
  const POINT point = b.Point(rejetee);
  b.Clic(point.x, point.y);
  EXPECT_EQ(b.Travail().LigneChoisie(), rejetee);
  EXPECT_EQ(::SendMessageW(b.P().Liste(true), LB_GETCURSEL, 0, 0), 0);
  ::SendMessageW(b.P().Carte(), WM_MOUSEMOVE, 0, MAKELPARAM(point.x, point.y));
  EXPECT_TRUE(b.P().VueCarte().Bulle().starts_with("ligne 3")) << b.P().VueCarte().Bulle();

  ::SendMessageW(b.P().Liste(true), LB_SETCURSEL, 0, 0);
  ::SendMessageW(b.fenetre->Handle(), WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(b.P().Liste(true)), LBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(b.P().Liste(true)));
  EXPECT_EQ(b.Travail().LigneChoisie(), rejetee);

  const double echelle = b.Travail().Vue().echelle;
  const POINT centre = b.Point(rejetee);  // centred by the row's click
  POINT ecran = centre;
  ::ClientToScreen(b.P().Carte(), &ecran);
  ::SendMessageW(b.fenetre->Handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), MAKELPARAM(ecran.x, ecran.y));
  EXPECT_NEAR(b.Travail().Vue().echelle / echelle, FacteurMolette(WHEEL_DELTA), 1e-9);
  const POINT apres = b.Point(rejetee);
  EXPECT_LE(std::abs(apres.x - centre.x) + std::abs(apres.y - centre.y), 1) << "zoomed around the pointer";
  ::SendMessageW(b.P().Carte(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(100, 100));
  ::SendMessageW(b.P().Carte(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(130, 110));
  ::SendMessageW(b.P().Carte(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(150, 120));
  ::SendMessageW(b.P().Carte(), WM_LBUTTONUP, 0, MAKELPARAM(150, 120));
  const POINT glisse = b.Point(rejetee);
  EXPECT_EQ(std::pair(glisse.x - apres.x, glisse.y - apres.y), std::pair(50L, 20L));

  NMLISTVIEW entete{};
  entete.hdr = {b.P().Table(), static_cast<UINT_PTR>(::GetDlgCtrlID(b.P().Table())), LVN_COLUMNCLICK};
  entete.iItem = -1;
  entete.iSubItem = 0;
  ::SendMessageW(b.fenetre->Handle(), WM_NOTIFY, entete.hdr.idFrom, reinterpret_cast<LPARAM>(&entete));
  EXPECT_TRUE(b.Cellule(0, 0).ends_with("f1.ptv"));
  EXPECT_EQ(ListView_GetNextItem(b.P().Table(), -1, LVNI_SELECTED), 1) << "the file shown stays selected";

  const int largeur = ListView_GetColumnWidth(b.P().Table(), 0);
  RECT propose{};
  ::GetWindowRect(b.fenetre->Handle(), &propose);
  ::SendMessageW(b.fenetre->Handle(), WM_DPICHANGED, MAKEWPARAM(192, 192), reinterpret_cast<LPARAM>(&propose));
  EXPECT_EQ(ListView_GetColumnWidth(b.P().Table(), 0), 2 * largeur);
}

// Sheets of A4 landscape, each an enhanced metafile referenced to the
// screen: what a printer would get, kept to be read back.
struct FeuillesMetafichiers : win32::Feuilles {
  std::vector<HENHMETAFILE> fichiers;
  HDC dc = nullptr;
  ~FeuillesMetafichiers() override {
    for (HENHMETAFILE f : fichiers) ::DeleteEnhMetaFile(f);
  }
  HDC Ouvrir() override {
    const RECT a4{0, 0, 29700, 21000};  // hundredths of a millimetre
    return dc = ::CreateEnhMetaFileW(nullptr, nullptr, &a4, nullptr);
  }
  bool Fermer() override {
    fichiers.push_back(::CloseEnhMetaFile(dc));
    return fichiers.back() != nullptr;
  }
};

// What a sheet's records draw: how many of each kind, its texts, and the
// colours of its pens.
struct Releve {
  std::map<DWORD, int> types;
  std::string textes;
  std::set<COLORREF> stylos;
};
int CALLBACK Relever(HDC, HANDLETABLE*, const ENHMETARECORD* record, int, LPARAM donnees) {
  auto& releve = *reinterpret_cast<Releve*>(donnees);
  ++releve.types[record->iType];
  if (record->iType == EMR_EXTTEXTOUTW) {
    const auto* texte = reinterpret_cast<const EMREXTTEXTOUTW*>(record);
    const auto* debut = reinterpret_cast<const wchar_t*>(reinterpret_cast<const BYTE*>(record) + texte->emrtext.offString);
    releve.textes += Utf8(std::wstring(debut, texte->emrtext.nChars)) + "\n";
  } else if (record->iType == EMR_CREATEPEN) {
    releve.stylos.insert(reinterpret_cast<const EMRCREATEPEN*>(record)->lopn.lopnColor);
  }
  return 1;
}

// Mise en page and Imprimer follow the file shown; its pages, drawn as a
// printer gets them, carry the verdict, the counts and every rejected line
// over several sheets, the picture with its red crosses on the first.
TEST(AtelierWin32, ImprimerEnMetafichiers) {
  Banc b;
  const HMENU menu = ::GetMenu(b.fenetre->Handle());
  const auto grise = [&](Commande c) {
    return (::GetMenuState(menu, static_cast<UINT>(win32::IdCommande(c)), MF_BYCOMMAND) & MF_GRAYED) != 0;
  };
  EXPECT_TRUE(grise(Commande::Imprimer) && grise(Commande::MettreEnPage));
  EcrireFichier("a.ptv", FichierAImprimer());
  reponse = [](win32::DialogueLotWin32& d) { ::SendMessageW(d.Controle("btnControler"), BM_CLICK, 0, 0); };
  ::SetTimer(nullptr, 0, 20, Minuterie);
  b.fenetre->DeposerAuDemarrage({fs::absolute("a.ptv").string()});
  b.Attendre();
  ASSERT_NE(b.Travail().Montre(), nullptr);
  EXPECT_FALSE(grise(Commande::Imprimer) || grise(Commande::MettreEnPage));

  FeuillesMetafichiers feuilles;
  const HDC ecran = ::GetDC(nullptr);
  const win32::ZoneMm zone = win32::ZoneImprimable(ecran, RECT{1000, 1500, 1000, 1000});
  ::ReleaseDC(nullptr, ecran);
  EXPECT_NEAR(zone.x, 10, 0.5);
  EXPECT_NEAR(zone.y, 15, 0.5);
  ASSERT_TRUE(b.fenetre->ImprimerSur(feuilles, {10, 10, 277, 190}));
  ASSERT_GT(feuilles.fichiers.size(), 1u);
  std::string texte;
  std::vector<Releve> releves(feuilles.fichiers.size());
  for (std::size_t k = 0; k < feuilles.fichiers.size(); ++k) {
    ASSERT_TRUE(::EnumEnhMetaFile(nullptr, feuilles.fichiers[k], Relever, &releves[k], nullptr));
    EXPECT_GT(releves[k].types[EMR_EXTTEXTOUTW], 0) << "sheet " << k;
    texte += releves[k].textes;
  }
  VerifierTexteImprime(texte);
  EXPECT_GT(releves[0].types[EMR_SETWORLDTRANSFORM] + releves[0].types[EMR_MODIFYWORLDTRANSFORM], 0)
      << "the picture, scaled into its place";
  const COLORREF rouge = RGB(kCouleurRejet.r, kCouleurRejet.g, kCouleurRejet.b);
  EXPECT_TRUE(releves[0].stylos.contains(rouge)) << "the rejected points' crosses";
  EXPECT_FALSE(releves[1].stylos.contains(rouge));
}

}  // namespace
}  // namespace quillon::test
