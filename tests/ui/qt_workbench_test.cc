// The workbench's Qt view over the fakes: a folder dropped on the window
// goes through the batch dialog into the table; the picture paints the
// rejected points where they are; a row of a list centres its point;
// Annuler stops a batch; the file shown prints.
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDropEvent>
#include <QHeaderView>
#include <QListWidget>
#include <QMimeData>
#include <QPrinter>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QUrl>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>

#include "ui/qt/batch_dialog_qt.h"
#include "ui/qt/main_window.h"
#include "ui/qt/map_widget.h"
#include "ui/qt/workbench_view.h"
#include "io/encoding.h"
#include "io/journal.h"
#include "window_fakes.h"

namespace fs = std::filesystem;

namespace quillon::test {
namespace {

struct BancQt : FauxServices {
  DossierCourant dossier;
  AffichageFenetre affichage{boites};
  ReglagesExecution reglages;
  std::unique_ptr<frmQuillon> fenetre;
  int dialogues = 0;

  BancQt() {
    InitialiserTables(reglages);
    reglages.affichage = &affichage;
    fenetre = std::make_unique<frmQuillon>(reglages, services);
    affichage.DefinirParent(static_cast<QWidget*>(fenetre.get()));
    fenetre->show();
  }
  Atelier& Travail() { return fenetre->Logique().Travail(); }
  VueAtelierQt& Vue() { return *fenetre->VueTravail(); }
  template <typename T>
  T* Controle(const char* nom) { return fenetre->findChild<T*>(QLatin1String(nom)); }

  // The batch dialog, once shown, gets `reponse` (its buttons clicked).
  void RepondreAuDialogue(std::function<void(frmControlerLot&)> reponse) {
    auto* minuterie = new QTimer(fenetre.get());
    QObject::connect(minuterie, &QTimer::timeout, [this, minuterie, reponse] {
      auto* dialogue = fenetre->findChild<frmControlerLot*>();
      if (dialogue == nullptr || !dialogue->isVisible()) return;
      minuterie->stop();
      minuterie->deleteLater();
      ++dialogues;
      reponse(*dialogue);
    });
    minuterie->start(5);
  }
  // Dragged over the window and dropped: whether the window took it.
  bool Deposer(const QStringList& chemins) {
    QMimeData donnees;
    QList<QUrl> urls;
    for (const QString& c : chemins) urls.push_back(QUrl::fromLocalFile(fs::absolute(c.toStdString()).c_str()));
    donnees.setUrls(urls);
    const QPoint ici = fenetre->rect().center();
    QDragEnterEvent entree(ici, Qt::CopyAction, &donnees, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(fenetre.get(), &entree);
    if (!entree.isAccepted()) return false;
    QDropEvent depot(QPointF(ici), Qt::CopyAction, &donnees, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(fenetre.get(), &depot);
    return depot.isAccepted();
  }
  // Until `fait` holds, the events of the window handled meanwhile.
  bool Jusqua(const std::function<bool()>& fait) {
    const auto fin = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (std::chrono::steady_clock::now() < fin) {
      QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
      if (fait()) return true;
    }
    return false;
  }
  // Until the batch has ended and the file selected is shown.
  bool Attendre() {
    return Jusqua([this] {
      return !Travail().EtatAvancement().enCours && (!Travail().RangChoisi() || Travail().Montre() != nullptr);
    });
  }
  QString Cellule(int rang, int colonne) {
    return Vue().Table()->model()->index(rang, colonne).data().toString();
  }
};

void Controler(frmControlerLot& d) {
  QTest::mouseClick(d.findChild<QPushButton*>(QStringLiteral("btnControler")), Qt::LeftButton);
}

// A folder dropped: the batch dialog (subfolders left out), then a row per
// point file with its outcome and colour, the file with rejected lines
// shown with its lists, and its rejected point painted red where it is.
TEST(AtelierQt, DossierDeposeJusquAuDessin) {
  BancQt b;
  fs::create_directories("livraison/sous");
  EcrireFichier("livraison/a.ptv", Points(4));
  EcrireFichier("livraison/b.ptv", Points(5) + kRejetee);
  EcrireFichier("livraison/sous/c.ptv", Points(2));
  EcrireFichier("livraison/notes.txt", "rien");
  b.RepondreAuDialogue([](frmControlerLot& d) {
    EXPECT_EQ(d.findChild<QComboBox*>(QStringLiteral("lstAction"))->currentText(), "Contrôler seulement");
    d.findChild<QCheckBox*>(QStringLiteral("chkSousDossiers"))->click();
    Controler(d);
  });
  EXPECT_FALSE(b.Deposer({}));
  ASSERT_TRUE(b.Deposer({"livraison"}));
  ASSERT_TRUE(b.Attendre());
  EXPECT_EQ(b.dialogues, 1);
  ASSERT_EQ(b.Vue().Table()->model()->rowCount(), 2);
  EXPECT_TRUE(b.Cellule(0, 0).endsWith("livraison/b.ptv"));
  EXPECT_EQ(b.Cellule(0, 1), "rejets");
  EXPECT_EQ(b.Cellule(1, 1), "converti");
  EXPECT_EQ(b.Cellule(0, 2), "6");
  EXPECT_EQ(b.Vue().Table()->model()->index(0, 1).data(Qt::BackgroundRole).value<QColor>(),
            QColor(QRgb(CouleurIssue(lot::Issue::Rejets))));
  EXPECT_EQ(b.Vue().Table()->currentIndex().row(), 0);
  EXPECT_EQ(b.Vue().Liste(true)->count(), 1);
  EXPECT_TRUE(b.Controle<QPushButton>("btnVoirRapport")->isEnabled());
  EXPECT_FALSE(b.Controle<QProgressBar>("pgbAvancement")->isVisible());

  // Red where the rejected point is, none where the good points are.
  const VueCarte& v = b.Travail().Vue();
  const QImage image = b.Vue().Carte()->grab().toImage();
  ASSERT_EQ(image.width(), v.largeur);
  const auto rouges = [&](double y) {
    int n = 0;
    const int px = int(v.Px(y)), py = int(v.Py(1200456.780));
    for (int j = py - 5; j <= py + 5; ++j) {
      for (int i = px - 5; i <= px + 5; ++i) {
        const QColor c = image.pixelColor(i, j);
        n += c.red() > 200 && c.green() < 80 && c.blue() < 80;
      }
    }
    return n;
  };
  EXPECT_GE(rouges(2600125.450), 6);
  EXPECT_EQ(rouges(2600003), 0);

  // The table sorted by a heading; the row of the good file shows it.
  QHeaderView* entetes = b.Vue().Table()->horizontalHeader();
  QTest::mouseClick(entetes->viewport(), Qt::LeftButton, {},
                    QPoint(entetes->sectionViewportPosition(2) + 5, entetes->height() / 2));  // Lues
  EXPECT_EQ(b.Cellule(0, 1), "converti");
  b.Vue().Table()->selectRow(0);
  ASSERT_TRUE(b.Jusqua([&] { return b.Travail().Montre() != nullptr; }));
  EXPECT_EQ(b.Vue().Liste(true)->count(), 0);
}

// A row of the rejected lines clicked centres its point; a click on the
// point selects its row again after the view moved.
TEST(AtelierQt, ListeEtCarte) {
  BancQt b;
  EcrireFichier("a.ptv", Points(6) + kRejetee);
  b.RepondreAuDialogue(Controler);
  b.fenetre->Deposer({"a.ptv"});
  ASSERT_TRUE(b.Attendre());
  QListWidget* rejets = b.Vue().Liste(true);
  ASSERT_EQ(rejets->count(), 1);
  const VueCarte& v = b.Travail().Vue();
  EXPECT_GT(std::abs(v.Px(2600125.450) - v.largeur / 2.0), 20);
  QTest::mouseClick(rejets->viewport(), Qt::LeftButton, {}, rejets->visualItemRect(rejets->item(0)).center());
  EXPECT_NEAR(v.Px(2600125.450), v.largeur / 2.0, 1e-6);
  EXPECT_NEAR(v.Py(1200456.780), v.hauteur / 2.0, 1e-6);
  EXPECT_EQ(b.Travail().LigneChoisie(), 6u);

  rejets->clearSelection();
  QWidget* carte = b.Vue().Carte();
  const QPoint centre(v.largeur / 2, v.hauteur / 2);
  QTest::mousePress(carte, Qt::LeftButton, {}, centre - QPoint(40, 0));
  QTest::mouseMove(carte, centre);
  QTest::mouseRelease(carte, Qt::LeftButton, {}, centre);
  EXPECT_NEAR(v.Px(2600125.450), v.largeur / 2.0 + 40, 1e-6);  // dragged
  QTest::mouseClick(carte, Qt::LeftButton, {}, centre + QPoint(40, 0));
  EXPECT_EQ(rejets->currentRow(), 0);
}

// Annuler during a batch: the bar goes, every file keeps its row, some
// never ran.
TEST(AtelierQt, AnnulerUnLot) {
  BancQt b;
  fs::create_directory("d");
  for (int i = 0; i < 120; ++i) EcrireFichier("d/f" + std::to_string(i) + ".ptv", Points(2000, i));
  b.RepondreAuDialogue(Controler);
  b.fenetre->Deposer({"d"});
  QProgressBar* barre = b.Controle<QProgressBar>("pgbAvancement");
  ASSERT_TRUE(b.Jusqua([&] { return barre->isVisible(); }));
  EXPECT_TRUE(barre->text().contains("/ 120 fichiers"));
  QTest::mouseClick(b.Controle<QPushButton>("btnAnnuler"), Qt::LeftButton);
  ASSERT_TRUE(b.Attendre());
  EXPECT_FALSE(barre->isVisible());
  EXPECT_EQ(b.Vue().Table()->model()->rowCount(), 120);
  int nonTraites = 0;
  for (int rang = 0; rang < 120; ++rang) nonTraites += b.Cellule(rang, 1) == "non traité";
  EXPECT_GT(nonTraites, 0);
  EXPECT_TRUE(b.fenetre->close());
}

// Printed into a PDF on landscape A4 (read back with poppler's tools): the
// verdict, the four counts and every rejected line's number, over pages.
TEST(AtelierQt, ImprimerEnPdf) {
  if (std::system("pdftotext -v > /dev/null 2>&1") != 0 || std::system("pdfinfo -v > /dev/null 2>&1") != 0) {
    GTEST_SKIP() << "pdftotext and pdfinfo (Debian's poppler-utils) are missing";
  }
  BancQt b;
  QAction* imprimer = b.fenetre->findChild<QAction*>(QStringLiteral("mnuImprimer"));
  EXPECT_FALSE(imprimer->isEnabled());
  EcrireFichier("a.ptv", FichierAImprimer());
  b.RepondreAuDialogue(Controler);
  b.fenetre->Deposer({"a.ptv"});
  ASSERT_TRUE(b.Attendre());
  EXPECT_TRUE(imprimer->isEnabled());
  EXPECT_TRUE(b.fenetre->findChild<QAction*>(QStringLiteral("mnuMettreEnPage"))->isEnabled());

  QPrinter imprimante(QPrinter::HighResolution);
  imprimante.setOutputFormat(QPrinter::PdfFormat);
  imprimante.setOutputFileName(QStringLiteral("a.pdf"));
  imprimante.setPageSize(QPageSize(QPageSize::A4));
  imprimante.setPageOrientation(QPageLayout::Landscape);
  ASSERT_TRUE(b.fenetre->ImprimerSur(imprimante));
  ASSERT_EQ(std::system("pdftotext a.pdf a.txt && pdfinfo a.pdf > infos.txt"), 0);
  const std::string infos = LireFichier("infos.txt");
  EXPECT_TRUE(infos.find("842 x 595 pts (A4)") != std::string::npos ||
              infos.find("841.89 x 595.276 pts (A4)") != std::string::npos)
      << infos;  // landscape
  EXPECT_EQ(infos.find("Pages:          1\n"), std::string::npos) << infos;
  std::string lu = LireFichier("a.txt");
  for (const std::string ligature : {"\uFB01", "\uFB02"}) {  // the fonts' "fi" and "fl", as poppler reads them
    for (std::size_t k; (k = lu.find(ligature)) != std::string::npos;) lu.replace(k, ligature.size(), ligature == "\uFB01" ? "fi" : "fl");
  }
  VerifierTexteImprime(lu);
}

}  // namespace
}  // namespace quillon::test
