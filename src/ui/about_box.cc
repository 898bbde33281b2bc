#include "ui/about_box.h"

#include <algorithm>
#include <string>

#include <QLabel>
#include <QPainter>
#include <QPushButton>

#include "version.h"
#include "ui/app_icon.h"
#include "ui/form_layout.h"
#include "ui/registry.h"

namespace quillon {
namespace {

constexpr const char* kCleMsinfo = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";
constexpr const char* kValeurChemin = "PATH";
constexpr const char* kCleEmplacements = "SOFTWARE\\Microsoft\\Shared Tools Location";
constexpr const char* kValeurMsinfo = "MSINFO";
constexpr const char* kMessageSysInfoIndisponible = "System Information Is Unavailable At This Time";

QString Titre() { return QString::fromUtf8(kTitreApplication); }

}  // namespace

void StartSysInfo(Registre& registre, Programmes& programmes, BoitesMessages& messages, QWidget* parent) {
  std::string chemin;
  if (registre.GetKeyValue(kHkeyLocalMachine, kCleMsinfo, kValeurChemin, chemin)) {
    if (programmes.Demarrer(chemin)) return;
  } else if (registre.GetKeyValue(kHkeyLocalMachine, kCleEmplacements, kValeurMsinfo, chemin)) {
    chemin += "\\MSINFO32.EXE";
    if (programmes.FichierExiste(chemin) && programmes.Demarrer(chemin)) return;
  }
  messages.Message(parent, Titre(), QString::fromUtf8(kMessageSysInfoIndisponible));
}

frmAPropos::frmAPropos(Services& services, QWidget* parent)
    : QDialog(parent), services_(services), echelle_(EchelleEcran(parent != nullptr ? parent : this)) {
  setObjectName(QStringLiteral("frmAPropos"));
  setFont(PoliceFormulaire(font()));
  RendreDialogueFixe(this, TailleTwips(5730, 3555, echelle_));

  auto etiquette = [this](const char* nom, int gauche, int haut, int largeur, int hauteur) {
    auto* label = new QLabel(this);
    label->setObjectName(QLatin1String(nom));
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setGeometry(RectTwips(gauche, haut, largeur, hauteur, echelle_));
    return label;
  };

  QLabel* picIcon = etiquette("picIcon", 240, 240, 540, 540);
  picIcon->setPixmap(IconeApplication());
  QLabel* lblTitle = etiquette("lblTitle", 1050, 240, 3885, 480);
  QFont grande = lblTitle->font();
  grande.setPointSize(14);
  lblTitle->setFont(grande);
  etiquette("lblVersion", 1050, 780, 3885, 225);
  etiquette("lblDescription", 1050, 1125, 3885, 1170)->setWordWrap(true);
  etiquette("lblDisclaimer", 255, 2625, 3870, 825)->setWordWrap(true);

  auto* cmdOK = new QPushButton(QStringLiteral("OK"), this);
  cmdOK->setObjectName(QStringLiteral("cmdOK"));
  cmdOK->setGeometry(RectTwips(4245, 2625, 1260, 345, echelle_));
  cmdOK->setDefault(true);
  auto* cmdSysInfo = new QPushButton(QStringLiteral("&System Info..."), this);
  cmdSysInfo->setObjectName(QStringLiteral("cmdSysInfo"));
  cmdSysInfo->setGeometry(RectTwips(4260, 3075, 1245, 345, echelle_));
  setTabOrder(cmdOK, cmdSysInfo);

  connect(cmdOK, &QPushButton::clicked, this, &frmAPropos::cmdOK_Click);
  connect(cmdSysInfo, &QPushButton::clicked, this, &frmAPropos::cmdSysInfo_Click);
}

void frmAPropos::Afficher() { MontrerFormulaire(*this, charge_); }

void frmAPropos::Form_Load() {
  setWindowTitle(QStringLiteral("A propos de ") + Titre());
  const auto texte = [this](const char* nom, const QString& valeur) {
    auto* label = findChild<QLabel*>(QLatin1String(nom));
    label->setText(valeur);
    PlacerEtiquette(label, label->geometry());
  };
  texte("lblTitle", Titre());
  texte("lblVersion", QStringLiteral("Version ") + QString::fromUtf8(kTexteVersion));
  texte("lblDescription", QStringLiteral("Utilitaire de conversion de fichiers de points MD01"));
  texte("lblDisclaimer",
        QStringLiteral("Cette application est fournie \"en l'état\", sans aucune garantie, ni explicite, ni implicite"));
  findChild<QPushButton*>(QStringLiteral("cmdOK"))->setFocus();
}

void frmAPropos::cmdOK_Click() { close(); }

void frmAPropos::cmdSysInfo_Click() { StartSysInfo(services_.registre, services_.programmes, services_.messages, this); }

void frmAPropos::done(int resultat) {
  // However it is closed (OK, Enter, Escape, the title bar), the box is
  // unloaded.
  charge_ = false;
  QDialog::done(resultat);
}

void frmAPropos::paintEvent(QPaintEvent* evenement) {
  QDialog::paintEvent(evenement);
  // The etched rule between the description and the disclaimer: a grey line
  // with a white one, two pixels wide, just below it.
  QPainter p(this);
  const int fin = TwipsEnPixels(5654, echelle_);
  const int gris = TwipsEnPixels(90, echelle_);
  const int blanc = TwipsEnPixels(105, echelle_);
  const int hautGris = TwipsEnPixels(2445, echelle_);
  const int epaisseur = std::max(1, TwipsEnPixels(15, echelle_));
  const int hautBlanc = std::max(TwipsEnPixels(2460, echelle_), hautGris + epaisseur);
  p.fillRect(QRect(gris, hautGris, fin - gris, epaisseur), QColor(0x80, 0x80, 0x80));
  p.fillRect(QRect(blanc, hautBlanc, fin - blanc, 2 * epaisseur), Qt::white);
}

}  // namespace quillon
