#include "app/batch/options.h"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "app/batch/platform.h"
#include "app/batch/totals.h"
#include "io/console.h"
#include "io/encoding.h"
#include "io/translation.h"
#include "model/point.h"

namespace quillon::lot {
namespace {

enum class Cle {
  Recursif, PtpEn, Echelle, Theme, Sortie, Cible, Verifier, Fils, Json, Rapport, Tolerance, Aide, Version,
  Exporter, Srs, Comparer, ToleranceAltitude, Langue
};

struct Option {
  const char* longue;
  char courte;  // 0: none
  bool avecValeur;
  Cle cle;
};

constexpr Option kOptions[] = {
    {"recursif", 'r', false, Cle::Recursif}, {"ptp-en", 'p', true, Cle::PtpEn},
    {"echelle", 'e', true, Cle::Echelle},    {"theme", 't', true, Cle::Theme},
    {"sortie", 'o', true, Cle::Sortie},      {"cible", 'c', true, Cle::Cible},
    {"verifier", 'n', false, Cle::Verifier}, {"fils", 'j', true, Cle::Fils},
    {"json", 0, true, Cle::Json},            {"rapport", 0, true, Cle::Rapport},
    {"tolerance", 0, true, Cle::Tolerance},  {"aide", 'h', false, Cle::Aide},
    {"help", 0, false, Cle::Aide},           {"version", 'V', false, Cle::Version},
    {"exporter", 0, true, Cle::Exporter},    {"srs", 0, true, Cle::Srs},
    {"comparer", 0, false, Cle::Comparer},   {"tolerance-altitude", 0, true, Cle::ToleranceAltitude},
    {"langue", 0, true, Cle::Langue},
};

// --exporter's list, "gpkg,csv": each format once, in the order given.
std::string LireExports(const std::string& nom, const std::string& liste, std::vector<FormatExport>& formats) {
  formats.clear();
  std::size_t debut = 0;
  for (;;) {
    const std::size_t virgule = liste.find(',', debut);
    const std::string mot = liste.substr(debut, virgule == std::string::npos ? std::string::npos : virgule - debut);
    bool connu = false;
    for (FormatExport f : {FormatExport::GeoPackage, FormatExport::Csv, FormatExport::GeoJson, FormatExport::Dxf}) {
      if (mot != MotFormat(f)) continue;
      connu = true;
      if (!FormatDisponible(f)) {
        return Formater("cette version de quillon-lot ne sait pas écrire de GeoPackage (%s)", {mot});
      }
      if (std::find(formats.begin(), formats.end(), f) == formats.end()) formats.push_back(f);
    }
    if (!connu) return Formater("%s attend une liste de gpkg, csv, geojson et dxf, pas « %s »", {nom, mot});
    if (virgule == std::string::npos) return {};
    debut = virgule + 1;
  }
}

const Option* ParNomLong(std::string_view nom) {
  for (const Option& o : kOptions) {
    if (nom == o.longue) return &o;
  }
  return nullptr;
}

const Option* ParLettre(char lettre) {
  for (const Option& o : kOptions) {
    if (o.courte != 0 && o.courte == lettre) return &o;
  }
  return nullptr;
}

// The options that take a number: a distance, a system's code, a count.
std::string AppliquerNombre(Cle cle, const std::string& nom, const std::string& valeur, OptionsLot& r) {
  switch (cle) {
    case Cle::Tolerance:
    case Cle::ToleranceAltitude: {
      double metres = -1;
      const auto [fin, err] = std::from_chars(valeur.data(), valeur.data() + valeur.size(), metres);
      if (err != std::errc() || fin != valeur.data() + valeur.size() || !(metres >= 0 && metres <= 1000)) {
        return Formater("%s attend une distance en mètres de 0 à 1000, pas « %s »", {nom, valeur});
      }
      (cle == Cle::Tolerance ? r.tolerance : r.toleranceAltitude) = metres;
      break;
    }
    case Cle::Srs: {
      const std::string_view code = std::string_view(valeur).substr(valeur.starts_with("EPSG:") ? 5 : valeur.size());
      const auto [fin, err] = std::from_chars(code.data(), code.data() + code.size(), r.epsg);
      if (code.empty() || err != std::errc() || fin != code.data() + code.size() || r.epsg < 1) {
        return Formater("%s attend EPSG:CODE, pas « %s »", {nom, valeur});
      }
      break;
    }
    case Cle::Fils: {
      unsigned n = 0;
      const auto [fin, err] = std::from_chars(valeur.data(), valeur.data() + valeur.size(), n);
      if (err != std::errc() || fin != valeur.data() + valeur.size() || n < 1 || n > kFilsMax) {
        return Formater("%s attend un nombre de 1 à %s, pas « %s »", {nom, std::to_string(kFilsMax), valeur});
      }
      r.fils = n;
      break;
    }
    default: break;
  }
  return {};
}

// Stores one option; the usage error, or empty.
std::string Appliquer(const Option& o, const std::string& valeur, OptionsLot& r) {
  const std::string nom = std::string("--") + o.longue;
  switch (o.cle) {
    case Cle::Recursif: r.recursif = true; break;
    case Cle::Verifier: r.verification = true; break;
    case Cle::Aide: r.aide = true; break;
    case Cle::Version: r.version = true; break;
    case Cle::Comparer: r.comparer = true; break;
    case Cle::PtpEn:
      if (valeur == "ptv") {
        r.ciblePtp = CiblePtp::Valeur;
      } else if (valeur == "ptm") {
        r.ciblePtp = CiblePtp::MD01;
      } else {
        return Formater("%s attend ptv ou ptm, pas « %s »", {nom, valeur});
      }
      break;
    case Cle::Echelle:
      r.classeEchelle = ClasseEchellePourMot(valeur);
      if (r.classeEchelle == 0) return Formater("%s attend 250, 500, 1000, 2000, 4000 ou 5000, pas « %s »", {nom, valeur});
      break;
    case Cle::Theme:
      r.groupeTheme = GroupeThemePourMot(valeur);
      if (r.groupeTheme == 0) return Formater("%s attend CS ou OD, pas « %s »", {nom, valeur});
      break;
    case Cle::Sortie:
      if (valeur.empty()) return Formater("%s attend un dossier", {nom});
      r.dossierSortie = valeur;
      break;
    case Cle::Cible:
      if (valeur.empty()) return Formater("%s attend un fichier", {nom});
      r.cible = valeur;
      break;
    case Cle::Json:
      if (valeur.empty()) return Formater("%s attend un fichier, ou - pour la sortie standard", {nom});
      r.rapportJson = valeur;
      break;
    case Cle::Rapport:
      if (valeur.empty()) return Formater("%s attend un dossier", {nom});
      r.dossierRapport = valeur;
      break;
    case Cle::Tolerance:
    case Cle::ToleranceAltitude:
    case Cle::Srs:
    case Cle::Fils: return AppliquerNombre(o.cle, nom, valeur, r);
    case Cle::Exporter: return LireExports(nom, valeur, r.exports);
    case Cle::Langue:
      r.langue = LangueDuCode(valeur);
      if (!r.langue) return Formater("%s attend fr, de ou it, pas « %s »", {nom, valeur});
      break;
  }
  return {};
}

}  // namespace

LectureOptions LireOptions(const std::vector<std::string>& mots) {
  LectureOptions lu;
  OptionsLot& r = lu.options;
  bool finOptions = false;
  for (std::size_t i = 0; i < mots.size() && lu.erreur.empty(); ++i) {
    const std::string& mot = mots[i];
    if (finOptions || mot.size() < 2 || mot[0] != '-') {
      r.sources.push_back(mot);
    } else if (mot == "--") {
      finOptions = true;
    } else if (mot.starts_with("--")) {
      // --nom, --nom=valeur, --nom valeur
      const std::size_t egal = mot.find('=');
      const std::string nom = mot.substr(2, egal == std::string::npos ? std::string::npos : egal - 2);
      const Option* o = ParNomLong(nom);
      if (o == nullptr) {
        lu.erreur = Formater("option inconnue : %s", {"--" + nom});
      } else if (!o->avecValeur && egal != std::string::npos) {
        lu.erreur = Formater("%s ne prend pas de valeur", {"--" + nom});
      } else if (o->avecValeur && egal == std::string::npos && i + 1 == mots.size()) {
        lu.erreur = Formater("%s attend une valeur", {"--" + nom});
      } else {
        const std::string valeur = !o->avecValeur ? "" : egal != std::string::npos ? mot.substr(egal + 1) : mots[++i];
        lu.erreur = Appliquer(*o, valeur, r);
      }
    } else {
      // -rn, -j4, -j 4
      for (std::size_t k = 1; k < mot.size() && lu.erreur.empty(); ++k) {
        const Option* o = ParLettre(mot[k]);
        if (o == nullptr) {
          lu.erreur = Formater("option inconnue : %s", {std::string{'-', mot[k]}});
        } else if (!o->avecValeur) {
          lu.erreur = Appliquer(*o, "", r);
        } else if (k + 1 < mot.size()) {
          lu.erreur = Appliquer(*o, mot.substr(k + 1), r);
          break;
        } else if (i + 1 < mots.size()) {
          lu.erreur = Appliquer(*o, mots[++i], r);
        } else {
          lu.erreur = Formater("%s attend une valeur", {std::string{'-', mot[k]}});
        }
      }
    }
  }
  if (lu.erreur.empty() && !r.aide && !r.version && r.comparer) {
    const char* seule = r.recursif                      ? "--recursif"
                        : r.ciblePtp != CiblePtp::Aucune ? "--ptp-en"
                        : !r.dossierSortie.empty()       ? "--sortie"
                        : !r.cible.empty()               ? "--cible"
                        : r.verification                 ? "--verifier"
                                                         : nullptr;
    if (r.sources.size() != 2) {
      lu.erreur = Traduire("--comparer attend deux fichiers : ANCIEN NOUVEAU");
    } else if (seule != nullptr) {
      lu.erreur = Formater("%s ne va pas avec --comparer", {seule});
    }
  } else if (lu.erreur.empty() && !r.aide && !r.version) {
    if (r.sources.empty()) {
      lu.erreur = Traduire("aucune source");
    } else if (!r.cible.empty() && r.sources.size() > 1) {
      lu.erreur = Traduire("--cible ne va qu'avec une seule source");
    }
  }
  return lu;
}

std::optional<Langue> LangueDemandee(const std::vector<std::string>& mots) {
  std::optional<Langue> langue;
  for (std::size_t i = 0; i < mots.size() && mots[i] != "--"; ++i) {
    if (mots[i].starts_with("--langue=")) {
      langue = LangueDuCode(std::string_view(mots[i]).substr(9));
    } else if (mots[i] == "--langue" && i + 1 < mots.size()) {
      langue = LangueDuCode(mots[++i]);
    }
  }
  return langue;
}

const char* TexteUsage() {
  return Traduire(
      "usage : quillon-lot [OPTIONS] SOURCE...\n"
      "        quillon-lot --aide   pour les options et les codes de sortie\n");
}

// In sections, each translated whole: what the program does, its options,
// its output and exit codes, the comparison.
std::string TexteAide() {
  std::string texte;
  for (const char* section : {
           N_(R"(usage : quillon-lot [OPTIONS] SOURCE...
        quillon-lot --comparer [OPTIONS] ANCIEN NOUVEAU

Convertit des fichiers de points, un lot à la fois. Une SOURCE est un fichier
ou un dossier ; un dossier fournit ses fichiers .ptv, .ptp et .pts (en
majuscules ou minuscules), ses sous-dossiers avec --recursif. L'extension de
chaque fichier choisit sa conversion :
  .ptv -> .ptp    valeurs en précisions (avec --echelle et --theme)
  .ptp -> .ptv    précisions en valeurs (--ptp-en ptv)
  .ptp -> .ptm    précisions en MD01 (--ptp-en ptm)
  .pts -> .ptv    DC en valeurs (avec --theme, CS par défaut)
La cible est écrite à côté de sa source avec la nouvelle extension, le journal
sous le nom de la source suivi de ".log" ; cibles et journaux sont les mêmes,
octet pour octet, que ceux du programme quillon.

)"),
           N_(R"(Options :
  -r, --recursif          parcourir aussi les sous-dossiers des dossiers
  -p, --ptp-en=ptv|ptm    ce que deviennent les fichiers .ptp (obligatoire
                          quand le lot en contient)
  -e, --echelle=ECHELLE   250, 500, 1000, 2000, 4000 ou 5000
  -t, --theme=CS|OD       groupe de thèmes des points de situation
  -o, --sortie=DOSSIER    cibles et journaux dans DOSSIER, avec les
                          sous-dossiers d'un parcours récursif
  -c, --cible=FICHIER     le fichier cible, pour une seule source
  -n, --verifier          tout lire et tout convertir, écrire journaux et
                          comptes, mais aucune cible
  -j, --fils=N            N fichiers à la fois, 64 au plus (par défaut, un
                          par cœur)
      --json=FICHIER      rapport JSON dans FICHIER ; "-" : sur la sortie
                          standard, au lieu du rapport en texte
      --rapport=DOSSIER   un rapport de contrôle HTML par fichier dans
                          DOSSIER, et DOSSIER/index.html (avec --comparer,
                          un fichier : voir plus bas)
      --tolerance=METRES  distance sous laquelle deux points différents
                          sont signalés comme proches (0.01 par défaut)
      --exporter=LISTE    exporter aussi les points convertis et rejetés, à
                          côté de la cible : gpkg, csv, geojson, dxf (une
                          liste séparée par des virgules)
      --srs=EPSG:CODE     le système de coordonnées des exports (sinon deviné
                          de l'étendue des points : EPSG:2056 ou EPSG:21781)
      --comparer          comparer deux fichiers de points (voir plus bas)
      --tolerance-altitude=METRES
                          avec --comparer, écart d'altitude au-delà duquel
                          un point a bougé (0.01 par défaut)
      --langue=fr|de|it   la langue de l'aide et des messages (par défaut,
                          celle de l'utilisateur)
  -h, --aide, --help      ce texte
  -V, --version           la version

)"),
           N_(R"(Sortie standard : une ligne par fichier, dans l'ordre des sources, ses champs
séparés par des tabulations : source, cible, lignes lues, lignes ignorées,
erreurs de lecture, erreurs d'écriture, issue (converti, rejets, echec,
interrompu, non-traite) et, après un échec, son message ; puis les totaux.
Dans les noms et les messages, une tabulation, un saut de ligne, un retour
chariot et une barre oblique inverse s'écrivent \t, \n, \r et \\ (sous
Windows, la barre oblique inverse sépare les dossiers et reste seule).
Un dossier illisible est une ligne en échec ; le dossier de -o n'est pas
parcouru ; un fichier atteint deux fois n'est converti qu'une fois.
Sur un terminal, l'erreur standard montre l'avancement.

Codes de sortie :
  0    tous les fichiers convertis sans champ rejeté
  1    des lignes ont été rejetées (erreurs de lecture ou d'écriture)
  2    un fichier n'a pas pu être ouvert, créé, lu ou écrit (les autres
       fichiers sont tout de même convertis)
  64   ligne de commande incorrecte
  130  interrompu (Ctrl-C) : les fichiers terminés le restent, ceux en cours
       gardent leur cible précédente

)"),
           N_(R"(Comparaison (--comparer ANCIEN NOUVEAU) : deux fichiers .ptv, .ptp ou .pts,
lus comme pour une conversion, sans journal. Les points sont appariés par
thème, commune, plan et numéro ; chacun est nouveau (seulement dans NOUVEAU),
supprime (seulement dans ANCIEN), deplace (plus de --tolerance à plat, plus
de --tolerance-altitude en altitude, ou altitude apparue ou disparue),
modifie (un autre champ a changé) ou identique (seulement compté). Un numéro
présent deux fois dans un fichier est un doublon, laissé hors de
l'appariement ; une ligne rejetée par la lecture est listée à part. Entre
fichiers de sortes différentes, seuls les champs que les deux portent sont
comparés ; un code de valeur est changé en précisions par les tables de
valeurs, comme le ferait la conversion (avec --echelle et --theme).
Sortie standard : une ligne par différence, triée par catégorie (nouveau,
supprime, deplace, modifie, doublon, rejete) puis par ligne de l'ancien
fichier (du nouveau pour ce qui n'y est pas), ses champs séparés par des
tabulations : catégorie, identité, ligne ancienne, ligne nouvelle, dY, dX,
dH, distance, champs changés (ou messages d'une ligne rejetée) ; puis une
ligne de total par catégorie et la liste des champs comparés.
  --json=FICHIER          la même chose en JSON ("-" : sur la sortie standard)
  --rapport=FICHIER.html  un rapport HTML : les points des deux fichiers
                          dessinés, les déplacements en flèches ; un
                          dossier existant reçoit ANCIEN-NOUVEAU.html
Codes de sortie : 0 aucune différence, 1 des différences, 2 un fichier
illisible, 64 ligne de commande incorrecte.
)")}) {
    texte += Traduire(section);
  }
  return texte;
}

void SignalerErreur(std::string_view message) {
  EcrireErreur(Utf8VersCp1252("quillon-lot : " + std::string(message)) + std::string(FinLigne()));
}

int ErreurUsage(std::string_view message) {
  EcrireErreur(Utf8VersCp1252("quillon-lot : " + std::string(message) + "\n" + TexteUsage()));
  return kSortieUsage;
}

}  // namespace quillon::lot
