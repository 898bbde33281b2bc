#include "ui/qt/workbench_view.h"

#include <QAbstractTableModel>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>

#include "ui/qt/main_window.h"
#include "ui/qt/map_widget.h"
#include "ui/workbench.h"

namespace quillon {

// The table's rows, as the workbench orders them.
class ModeleFichiers : public QAbstractTableModel {
 public:
  ModeleFichiers(const Atelier& atelier, QObject* parent) : QAbstractTableModel(parent), atelier_(atelier) {}

  void Recharger() {
    beginResetModel();
    endResetModel();
  }
  int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(atelier_.Table().Taille());
  }
  int columnCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : TableFichiers::kColonnes;
  }
  QVariant data(const QModelIndex& index, int role) const override {
    const TableFichiers& table = atelier_.Table();
    const auto rang = static_cast<std::size_t>(index.row());
    if (!index.isValid() || rang >= table.Taille()) return {};
    const LigneFichier& ligne = table.Ligne(rang);
    switch (role) {
      case Qt::DisplayRole: return QString::fromStdString(table.Cellule(rang, index.column()));
      case Qt::BackgroundRole:
        if (index.column() == kColonneIssue) return QColor(QRgb(CouleurIssue(ligne.issue)));
        return {};
      case Qt::ToolTipRole:
        return ligne.raison.empty() ? QVariant() : QVariant(QString::fromStdString(ligne.raison));
      case Qt::TextAlignmentRole:
        return index.column() > kColonneIssue ? QVariant(int(Qt::AlignRight | Qt::AlignVCenter)) : QVariant();
      default: return {};
    }
  }
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return TexteQt(TableFichiers::Entete(section));
  }

  static constexpr int kColonneIssue = int(TableFichiers::Colonne::Issue) - 1;

 private:
  const Atelier& atelier_;
};

VueAtelierQt::VueAtelierQt(Atelier& atelier, QWidget* parent) : QWidget(parent), atelier_(atelier) {
  setObjectName(QStringLiteral("atelier"));
  modele_ = new ModeleFichiers(atelier, this);
  table_ = new QTableView(this);
  table_->setObjectName(QStringLiteral("tblFichiers"));
  table_->setModel(modele_);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setSelectionMode(QAbstractItemView::SingleSelection);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setWordWrap(false);
  table_->verticalHeader()->hide();
  table_->verticalHeader()->setDefaultSectionSize(table_->fontMetrics().height() + 6);
  QHeaderView* entetes = table_->horizontalHeader();
  entetes->setSectionsClickable(true);
  entetes->setSortIndicatorShown(false);
  entetes->setSectionResizeMode(QHeaderView::Interactive);
  entetes->setStretchLastSection(false);
  for (int colonne = 1; colonne < TableFichiers::kColonnes; ++colonne) {
    const int largeur = table_->fontMetrics().horizontalAdvance(TexteQt(TableFichiers::Entete(colonne)) + "  ");
    table_->setColumnWidth(colonne, std::max(largeur, table_->fontMetrics().horizontalAdvance("0 000 000")) + 16);
  }
  entetes->setSectionResizeMode(0, QHeaderView::Stretch);  // the path takes what the counts leave
  entetes->setMinimumSectionSize(table_->fontMetrics().horizontalAdvance(QStringLiteral("0 000 000")));
  connect(entetes, &QHeaderView::sectionClicked, this, [this](int colonne) { atelier_.Table_Entete(colonne); });
  connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this](const QModelIndex& i) {
    if (!enMiseAJour_ && i.isValid()) atelier_.Table_Clic(std::size_t(i.row()));
  });

  carte_ = new CarteQt(atelier, this);
  auto* bas = new QSplitter(Qt::Horizontal, this);
  bas->setObjectName(QStringLiteral("splCarte"));
  bas->addWidget(carte_);
  bas->addWidget(CreerListes());
  bas->setStretchFactor(0, 3);
  bas->setStretchFactor(1, 2);
  bas->setSizes({600, 400});
  auto* separation = new QSplitter(Qt::Vertical, this);
  separation->setObjectName(QStringLiteral("splAtelier"));
  separation->addWidget(table_);
  separation->addWidget(bas);
  separation->setStretchFactor(0, 1);
  separation->setStretchFactor(1, 2);
  separation->setSizes({1000, 2000});

  auto* mise = new QVBoxLayout(this);
  mise->setContentsMargins(6, 6, 6, 6);
  mise->addWidget(separation, 1);
  mise->addWidget(CreerBoutons());
  Rafraichir(kPartieTable | kPartieAvancement | kPartieFichier | kPartieActions);
}

QWidget* VueAtelierQt::CreerListes() {
  auto* cote = new QWidget(this);
  auto* mise = new QVBoxLayout(cote);
  mise->setContentsMargins(0, 0, 0, 0);
  const auto liste = [&](bool rejets, const char* nom, QLabel*& titre) {
    titre = new QLabel(cote);
    auto* l = new QListWidget(cote);
    l->setObjectName(QLatin1String(nom));
    l->setUniformItemSizes(true);
    l->setSelectionMode(QAbstractItemView::SingleSelection);
    connect(l, &QListWidget::currentRowChanged, this, [this, rejets](int rang) {
      if (!enMiseAJour_ && rang >= 0) atelier_.Liste_Clic(rejets, std::size_t(rang));
    });
    connect(l, &QListWidget::itemClicked, this, [this, l, rejets](QListWidgetItem* item) {
      atelier_.Liste_Clic(rejets, std::size_t(l->row(item)));
    });
    mise->addWidget(titre);
    mise->addWidget(l, 1);
    return l;
  };
  rejets_ = liste(true, "lstRejets", lblRejets_);
  constats_ = liste(false, "lstConstats", lblConstats_);
  return cote;
}

QPushButton* VueAtelierQt::Bouton(const char* nom, const QString& texte, std::function<void()> clic) {
  auto* bouton = new QPushButton(texte, this);
  bouton->setObjectName(QLatin1String(nom));
  bouton->setAutoDefault(false);
  connect(bouton, &QPushButton::clicked, this, std::move(clic));
  return bouton;
}

QWidget* VueAtelierQt::CreerBoutons() {
  auto* rangee = new QWidget(this);
  auto* mise = new QHBoxLayout(rangee);
  mise->setContentsMargins(0, 0, 0, 0);
  btnVueDEnsemble_ =
      Bouton("btnVueDEnsemble", TexteQt(Traduire(kBoutonVueDEnsemble)), [this] { atelier_.btnVueDEnsemble_Click(); });
  btnVoirRapport_ = Bouton("btnVoirRapport", TexteQt(Traduire(kBoutonRapport)), [this] { atelier_.btnVoirRapport_Click(); });
  btnVoirRapportLot_ =
      Bouton("btnVoirRapportLot", TexteQt(Traduire(kBoutonRapportLot)),
             [this] { atelier_.btnVoirRapportLot_Click(); });
  btnExporter_ = Bouton("btnExporter", TexteQt(Traduire(kBoutonExporter)), [this] { atelier_.btnExporter_Click(); });
  btnOuvrirDossier_ =
      Bouton("btnOuvrirDossier", TexteQt(Traduire(kBoutonOuvrirDossier)), [this] { atelier_.btnOuvrirDossier_Click(); });
  for (QPushButton* b : {btnVueDEnsemble_, btnVoirRapport_, btnVoirRapportLot_, btnExporter_, btnOuvrirDossier_}) {
    mise->addWidget(b);
  }
  mise->addStretch(1);

  // The progress of a batch, at the right of the buttons while it runs.
  barreAvancement_ = new QWidget(rangee);
  auto* miseAvancement = new QHBoxLayout(barreAvancement_);
  miseAvancement->setContentsMargins(0, 0, 0, 0);
  avancement_ = new QProgressBar(barreAvancement_);
  avancement_->setObjectName(QStringLiteral("pgbAvancement"));
  avancement_->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("000 000 / 000 000 fichiers — 0 000 000 lignes/s")) + 24);
  auto* annuler = Bouton("btnAnnuler", TexteQt(Traduire(kBoutonAnnuler)), [this] { atelier_.btnAnnuler_Click(); });
  annuler->setParent(barreAvancement_);
  miseAvancement->addWidget(avancement_);
  miseAvancement->addWidget(annuler);
  mise->addWidget(barreAvancement_);
  return rangee;
}

void VueAtelierQt::Rafraichir(unsigned parties) {
  if (parties & kPartieTable) MontrerTable();
  if (parties & kPartieAvancement) MontrerAvancement();
  if (parties & kPartieFichier) MontrerFichier();
  if (parties & (kPartieFichier | kPartieCarte)) {
    MontrerChoixDansListes();
    carte_->update();
  }
  if (parties & kPartieActions) MontrerActions();
}

void VueAtelierQt::MontrerTable() {
  enMiseAJour_ = true;
  modele_->Recharger();
  const TableFichiers& table = atelier_.Table();
  QHeaderView* entetes = table_->horizontalHeader();
  if (table.Tri() == TableFichiers::Colonne::Probleme) {
    entetes->setSortIndicatorShown(false);
  } else {
    entetes->setSortIndicatorShown(true);
    entetes->setSortIndicator(int(table.Tri()) - 1, table.Descendant() ? Qt::DescendingOrder : Qt::AscendingOrder);
  }
  if (const std::optional<std::size_t> rang = atelier_.RangChoisi()) {
    const QModelIndex index = modele_->index(int(*rang), 0);
    table_->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    table_->scrollTo(index);
  }
  enMiseAJour_ = false;
}

void VueAtelierQt::MontrerAvancement() {
  const Avancement& a = atelier_.EtatAvancement();
  barreAvancement_->setVisible(a.enCours);
  avancement_->setRange(0, int(std::max<std::size_t>(a.total, 1)));
  avancement_->setValue(int(a.faits));
  avancement_->setFormat(QString::fromStdString(a.Texte()));
}

void VueAtelierQt::MontrerFichier() {
  const FichierMontre* montre = atelier_.Montre();
  if (montre == montre_) return;
  montre_ = montre;
  enMiseAJour_ = true;
  for (const bool rejets : {true, false}) {
    QListWidget* liste = Liste(rejets);
    liste->clear();
    if (montre == nullptr) continue;
    QStringList textes;
    for (const EntreeListe& e : rejets ? montre->Rejets() : montre->Constats()) {
      textes.push_back(QString::fromStdString(e.texte));
    }
    liste->addItems(textes);
    for (int k = 0; k < liste->count(); ++k) liste->item(k)->setToolTip(textes[k]);  // rows wider than the list
  }
  enMiseAJour_ = false;
  lblRejets_->setText(TexteQt(TitreListe(true, montre)));
  lblConstats_->setText(TexteQt(TitreListe(false, montre)));
}

void VueAtelierQt::MontrerChoixDansListes() {
  enMiseAJour_ = true;
  for (const bool rejets : {true, false}) {
    const std::optional<std::size_t> rang = atelier_.RangDansListe(rejets);
    QListWidget* liste = Liste(rejets);
    if (rang) {
      liste->setCurrentRow(int(*rang));
      liste->scrollToItem(liste->currentItem());
    } else if (atelier_.LigneChoisie()) {  // the point chosen is not about this list
      liste->clearSelection();
    }
  }
  enMiseAJour_ = false;
}

void VueAtelierQt::MontrerActions() {
  const bool fichier = atelier_.FichierActif();
  btnVueDEnsemble_->setEnabled(fichier);
  btnVoirRapport_->setEnabled(fichier);
  btnExporter_->setEnabled(fichier);
  btnVoirRapportLot_->setEnabled(atelier_.LotActif());
  btnOuvrirDossier_->setEnabled(atelier_.RangChoisi().has_value());
}

}  // namespace quillon
