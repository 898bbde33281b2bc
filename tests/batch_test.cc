// quillon-lot through its real executable: what it converts, what it
// reports, how it ends. Targets and logs are compared with those of the
// console program (and, for DC files, of the run the DC dialog starts).
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>
#include <fcntl.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "conversion/conversions.h"
#include "exe_runner.h"
#include "test_support.h"

namespace fs = std::filesystem;

namespace quillon::test {
namespace {

const OptionsExe kLot = [] {
  OptionsExe o;
  o.programme = Programme::Lot;
  return o;
}();

ResultatExe LancerLot(const std::vector<std::string>& arguments, const std::string& dossier) {
  return LancerQuillon(arguments, dossier, kLot);
}

// The lines of the report, without their line ends.
std::vector<std::string> LignesRapport(const std::string& sortie) {
  std::vector<std::string> lignes;
  std::istringstream flux(sortie);
  for (std::string ligne; std::getline(flux, ligne);) {
    if (!ligne.empty() && ligne.back() == '\r') ligne.pop_back();
    lignes.push_back(ligne);
  }
  return lignes;
}

// A report line's fields, split at the tabs.
std::vector<std::string> Champs(const std::string& ligne) {
  std::vector<std::string> champs;
  std::size_t debut = 0;
  for (std::size_t tab; (tab = ligne.find('\t', debut)) != std::string::npos; debut = tab + 1) {
    champs.push_back(ligne.substr(debut, tab - debut));
  }
  champs.push_back(ligne.substr(debut));
  return champs;
}

void Generer(const std::string& sorte, int lignes, int graine, bool fautif, const std::string& chemin) {
  const std::string commande = std::string(QUILLON_GENERER) + " " + sorte + " " + std::to_string(lignes) + " " +
                               std::to_string(graine) + (fautif ? " --faulty " : " ") + "'" + chemin + "'";
  ASSERT_EQ(std::system(commande.c_str()), 0) << commande;
}

// A log without its date line.
std::string SansDate(const std::string& journal) {
  const std::size_t debut = journal.find("\r\n");
  const std::size_t fin = journal.find("\r\n", debut + 2);
  if (debut == std::string::npos || fin == std::string::npos) return journal;
  return journal.substr(0, debut + 2) + journal.substr(fin + 2);
}

// A path of the report with Windows' separators as slashes.
std::string Barres(std::string chemin) {
  for (char& c : chemin) c = c == '\\' ? '/' : c;
  return chemin;
}

// The report's lines by source (its separators as slashes): the fields as
// written.
std::map<std::string, std::vector<std::string>> ParSource(const std::string& sortie) {
  std::map<std::string, std::vector<std::string>> lignes;
  for (const std::string& l : LignesRapport(sortie)) {
    if (l.starts_with("Total: ")) continue;
    std::vector<std::string> c = Champs(l);
    lignes[Barres(c[0])] = c;
  }
  return lignes;
}

// The outcome words in report order.
std::vector<std::string> Issues(const std::string& sortie) {
  std::vector<std::string> issues;
  for (const std::string& l : LignesRapport(sortie)) {
    if (!l.starts_with("Total: ")) issues.push_back(Champs(l).at(6));
  }
  return issues;
}

// --- Same bytes as the console ----------------------------------------------

struct CasOctets {
  const char* nom;
  const char* sorte;                     // the generated kind, and the extension
  std::vector<std::string> optionsLot;   // quillon-lot's options
  const char* extensionCible;
  std::vector<std::string> motsConsole;  // quillon's words after source and target
};

void PrintTo(const CasOctets& cas, std::ostream* os) { *os << cas.nom; }

class MemesOctets : public ::testing::TestWithParam<CasOctets> {};

// A folder of valid, faulty and sample files converted on several threads;
// then each file again through quillon on the same paths.
TEST_P(MemesOctets, QueLaConsole) {
  const CasOctets& cas = GetParam();
  DossierTemporaire dossier;
  const std::string ext = cas.sorte;
  Generer(ext, 3000, 7, false, dossier / ("valide." + ext));
  Generer(ext, 500, 8, true, dossier / ("fautif." + ext));
  fs::copy_file(std::string(QUILLON_SAMPLES_DIR) + "/lot12." + ext, dossier / ("lot12." + ext));
  EcrireFichier(dossier / ("vide." + ext), "");

  std::vector<std::string> arguments = cas.optionsLot;
  arguments.insert(arguments.end(), {"-j", "3", "."});
  const ResultatExe lot = LancerLot(arguments, dossier.chemin());
  ASSERT_EQ(lot.codeSortie, 1) << lot.sortie << lot.erreur;  // the faulty file
  const auto rapport = ParSource(lot.sortie);
  ASSERT_EQ(rapport.size(), 4u) << lot.sortie;

  for (const std::string nom : {"valide", "fautif", "lot12", "vide"}) {
    ASSERT_TRUE(rapport.contains("./" + nom + "." + ext)) << nom;
    // The paths as the batch wrote them into the log, for the console too.
    const auto& c = rapport.at("./" + nom + "." + ext);
    const std::string source = c.at(0);
    const std::string cible = c.at(1);
    EXPECT_EQ(Barres(cible), "./" + nom + "." + cas.extensionCible);
    const std::string cibleLot = LireFichier(dossier / Barres(cible));
    const std::string journalLot = LireFichier(dossier / Barres(source + ".log"));
    fs::remove(dossier / Barres(cible));
    fs::remove(dossier / Barres(source + ".log"));

    std::vector<std::string> mots = {source, cible};
    mots.insert(mots.end(), cas.motsConsole.begin(), cas.motsConsole.end());
    const ResultatExe console = LancerQuillon(mots, dossier.chemin());
    ASSERT_EQ(console.codeSortie, 0);
    EXPECT_EQ(cibleLot, LireFichier(dossier / Barres(cible))) << source;
    EXPECT_EQ(SansDate(journalLot), SansDate(LireFichier(dossier / Barres(source + ".log")))) << source;
    // The counts of the report are those of the console's summary.
    EXPECT_NE(console.sortie.find(c.at(2) + " ligne(s) lues"), std::string::npos) << console.sortie;
    EXPECT_NE(console.sortie.find(c.at(4) + " erreur(s)"), std::string::npos) << console.sortie;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Lot, MemesOctets,
    ::testing::Values(CasOctets{"ValeurSansOptions", "ptv", {}, "ptp", {}},
                      CasOctets{"Valeur1000CS", "ptv", {"--echelle=1000", "-t", "cs"}, "ptp", {"1000", "CS"}},
                      CasOctets{"Valeur250OD", "ptv", {"-e", "250", "--theme", "OD"}, "ptp", {"250", "OD"}},
                      CasOctets{"PrecisionEnValeur", "ptp", {"-p", "ptv"}, "ptv", {}},
                      CasOctets{"PrecisionEnMD01", "ptp", {"--ptp-en", "ptm", "-e", "500", "-t", "CS"}, "ptm",
                                {"500", "CS"}}),
    [](const auto& info) { return std::string(info.param.nom); });

// The DC conversion is not on the console's command line: the batch's is
// compared with the run that the DC dialog starts, on the same paths.
class AffichageMuet : public Affichage {
 public:
  void MontrerBilan(const std::array<std::string, 4>&) override {}
  void MontrerErreurFatale(const std::string&) override {}
};

TEST(LotDC, MemesOctetsQueLeDialogue) {
  if (SousWindows()) GTEST_SKIP() << "compared with the Linux core";
  for (const auto& [options, groupe] : std::vector<std::pair<std::vector<std::string>, int32_t>>{
           {{}, 2}, {{"-t", "od"}, 3}, {{"--theme=CS"}, 2}}) {
    DossierTemporaire dossier;
    Generer("pts", 2000, 9, false, dossier / "dc.pts");
    Generer("pts", 300, 10, true, dossier / "fautif.PTS");
    fs::copy_file(std::string(QUILLON_SAMPLES_DIR) + "/lot12.pts", dossier / "lot12.pts");
    std::vector<std::string> arguments = options;
    arguments.push_back(dossier.chemin());
    const ResultatExe lot = LancerLot(arguments, dossier.chemin());
    ASSERT_EQ(lot.codeSortie, 1) << lot.sortie << lot.erreur;
    for (const auto& [source, cible] : std::vector<std::pair<std::string, std::string>>{
             {"dc.pts", "dc.ptv"}, {"fautif.PTS", "fautif.PTV"}, {"lot12.pts", "lot12.ptv"}}) {
      const std::string cibleLot = LireFichier(dossier / cible);
      const std::string journalLot = LireFichier(dossier / (source + ".log"));
      ReglagesExecution reglages;
      AffichageMuet muet;
      reglages.affichage = &muet;
      reglages.DefinirSource(dossier / source);
      reglages.FichierCible.Nom = dossier / cible;
      ASSERT_TRUE(ConvertirPtDCEnPtVal(reglages, groupe));
      EXPECT_EQ(cibleLot, LireFichier(dossier / cible)) << source << " " << groupe;
      EXPECT_EQ(SansDate(journalLot), SansDate(LireFichier(dossier / (source + ".log")))) << source;
    }
  }
}

// --- Exit statuses and outcomes ---------------------------------------------

struct CasIssue {
  const char* nom;
  std::vector<std::string> sources;
  std::vector<std::string> issues;  // in the order of the sources
  int code;
};

// In every case's folder: valide.ptv, fautif.ptv, longue.ptv (a line longer
// than a stream takes: it cannot be read), bloquee.ptv whose target is a
// folder (it cannot be created).
void PrintTo(const CasIssue& cas, std::ostream* os) { *os << cas.nom; }

class IssuesLot : public ::testing::TestWithParam<CasIssue> {};

TEST_P(IssuesLot, CodeDeSortie) {
  const CasIssue& cas = GetParam();
  DossierTemporaire dossier;
  Generer("ptv", 50, 1, false, dossier / "valide.ptv");
  Generer("ptv", 50, 2, true, dossier / "fautif.ptv");
  EcrireFichier(dossier / "longue.ptv", std::string(3 << 20, 'x'));
  Generer("ptv", 50, 3, false, dossier / "bloquee.ptv");
  fs::create_directory(dossier / "bloquee.ptp");

  std::vector<std::string> arguments = {"-e", "1000", "-t", "CS"};
  arguments.insert(arguments.end(), cas.sources.begin(), cas.sources.end());
  const ResultatExe r = LancerLot(arguments, dossier.chemin());
  EXPECT_EQ(r.codeSortie, cas.code) << r.sortie << r.erreur;
  EXPECT_EQ(Issues(r.sortie), cas.issues) << r.sortie;
  EXPECT_EQ(r.erreur, "");  // not a terminal: nothing on standard error
  // A failure leaves no target and no log; the other files are converted.
  for (std::size_t i = 0; i < cas.sources.size() && i < cas.issues.size(); ++i) {
    const std::string source = cas.sources[i];
    const std::string cible = source.substr(0, source.size() - 1) + "p";
    if (cas.issues[i] == "echec") {
      EXPECT_FALSE(fs::exists(dossier / (source + ".log"))) << source;
      EXPECT_EQ(Champs(LignesRapport(r.sortie).at(i)).size(), 8u) << "a failure carries its message";
    } else {
      EXPECT_TRUE(fs::is_regular_file(dossier / cible)) << cible;
    }
  }
  EXPECT_TRUE(Temporaires(dossier.chemin()).empty());
}

INSTANTIATE_TEST_SUITE_P(
    Lot, IssuesLot,
    ::testing::Values(CasIssue{"ToutConverti", {"valide.ptv"}, {"converti"}, 0},
                      CasIssue{"Rejets", {"valide.ptv", "fautif.ptv"}, {"converti", "rejets"}, 1},
                      CasIssue{"SourceAbsente", {"absente.ptv", "valide.ptv"}, {"echec", "converti"}, 2},
                      CasIssue{"SourceIlisible", {"longue.ptv", "valide.ptv"}, {"echec", "converti"}, 2},
                      CasIssue{"CibleImpossible", {"bloquee.ptv", "valide.ptv"}, {"echec", "converti"}, 2},
                      CasIssue{"EchecPasseAvantRejets", {"fautif.ptv", "absente.ptv"}, {"rejets", "echec"}, 2}),
    [](const auto& info) { return std::string(info.param.nom); });

struct CasUsage {
  const char* nom;
  std::vector<std::string> arguments;
};

void PrintTo(const CasUsage& cas, std::ostream* os) { *os << cas.nom; }

class Usage : public ::testing::TestWithParam<CasUsage> {};

TEST_P(Usage, Code64EtUsageSurLErreurStandard) {
  DossierTemporaire dossier;
  Generer("ptv", 5, 1, false, dossier / "a.ptv");
  Generer("ptp", 5, 1, false, dossier / "b.ptp");
  const ResultatExe r = LancerLot(GetParam().arguments, dossier.chemin());
  EXPECT_EQ(r.codeSortie, 64);
  EXPECT_EQ(r.sortie, "");
  EXPECT_TRUE(r.erreur.starts_with("quillon-lot : ")) << r.erreur;
  EXPECT_NE(r.erreur.find("usage : quillon-lot"), std::string::npos) << r.erreur;
  EXPECT_FALSE(fs::exists(dossier / "a.ptp"));
  EXPECT_FALSE(fs::exists(dossier / "a.ptv.log"));
}

INSTANTIATE_TEST_SUITE_P(
    Lot, Usage,
    ::testing::Values(CasUsage{"SansSource", {}}, CasUsage{"OptionInconnue", {"--vite", "a.ptv"}},
                      CasUsage{"EchelleInconnue", {"-e", "0500", "a.ptv"}},
                      CasUsage{"ThemeInconnu", {"--theme=XX", "a.ptv"}},
                      CasUsage{"FilsZero", {"-j", "0", "a.ptv"}}, CasUsage{"ValeurManquante", {"a.ptv", "-e"}},
                      CasUsage{"PtpSansCible", {"a.ptv", "b.ptp"}}, CasUsage{"PtpDansUnDossier", {"."}},
                      CasUsage{"PtpEnInconnu", {"-p", "pts", "b.ptp"}},
                      CasUsage{"CibleAvecDeuxSources", {"-c", "x.ptp", "a.ptv", "a.ptv"}},
                      CasUsage{"ExtensionInconnue", {"a.txt"}}, CasUsage{"TexteDansLeChemin", {"a.ptv.bak"}}),
    [](const auto& info) { return std::string(info.param.nom); });

TEST(Lot, AideEtVersion) {
  DossierTemporaire dossier;
  for (const std::string option : {"--help", "--aide", "-h"}) {
    const ResultatExe r = LancerLot({option}, dossier.chemin());
    EXPECT_EQ(r.codeSortie, 0);
    for (const char* texte : {"--recursif", "--ptp-en", "--sortie", "--verifier", "--fils", "--json", "64", "130"}) {
      EXPECT_NE(r.sortie.find(texte), std::string::npos) << option << ": " << texte;
    }
  }
  const ResultatExe v = LancerLot({"--version"}, dossier.chemin());
  EXPECT_EQ(v.codeSortie, 0);
  EXPECT_NE(v.sortie.find("Version 0."), std::string::npos) << v.sortie;
}

// --- Sources, targets, logs ---------------------------------------------------

TEST(Lot, DossierParcouruSelonLExtensionReelle) {
  DossierTemporaire dossier;
  fs::create_directories(dossier / "d/sous/plus");
  Generer("ptv", 5, 1, false, dossier / "d/b.PTV");
  Generer("ptp", 5, 2, false, dossier / "d/a.ptp");
  Generer("pts", 5, 3, false, dossier / "d/c.Pts");
  Generer("ptv", 5, 4, false, dossier / "d/sous/e.ptv");
  Generer("ptv", 5, 5, false, dossier / "d/sous/plus/f.ptv");
  Generer("ptv", 5, 6, false, dossier / "d/x.ptv.txt");  // not a point file by its extension
  fs::create_directories(dossier / "d/dossier.ptv");     // nor a folder
  EcrireFichier(dossier / "d/notes.log", "");
  fs::copy(dossier / "d", dossier / "r", fs::copy_options::recursive);

  const ResultatExe plat = LancerLot({"-p", "ptm", "-e", "1000", "-t", "CS", "d"}, dossier.chemin());
  EXPECT_EQ(plat.codeSortie, 0) << plat.sortie;
  std::vector<std::string> sources;
  for (const auto& l : LignesRapport(plat.sortie)) {
    if (!l.starts_with("Total")) sources.push_back(Barres(Champs(l)[0] + " " + Champs(l)[1]));
  }
  EXPECT_EQ(sources, (std::vector<std::string>{"d/a.ptp d/a.ptm", "d/b.PTV d/b.PTP", "d/c.Pts d/c.ptv"}));

  const ResultatExe recursif = LancerLot({"-r", "--ptp-en=ptv", "-e1000", "-tCS", "r"}, dossier.chemin());
  EXPECT_EQ(recursif.codeSortie, 0) << recursif.sortie;
  EXPECT_EQ(ParSource(recursif.sortie).size(), 5u) << recursif.sortie;
  EXPECT_TRUE(fs::exists(dossier / "r/sous/plus/f.ptp"));
  EXPECT_FALSE(fs::exists(dossier / "r/x.ptv.ptp"));

  // Run again, the folder holds the targets of the first run: a target that
  // is a source of the batch is refused, and nothing is overwritten.
  const ResultatExe encore = LancerLot({"-p", "ptm", "-e", "1000", "-t", "CS", "d"}, dossier.chemin());
  EXPECT_EQ(encore.codeSortie, 2) << encore.sortie;
}

TEST(Lot, DossierDeSortieGardeLesSousDossiers) {
  DossierTemporaire dossier;
  fs::create_directories(dossier / "src/sous");
  Generer("ptv", 200, 1, false, dossier / "src/a.ptv");
  Generer("ptv", 200, 2, true, dossier / "src/sous/b.ptv");
  const ResultatExe r = LancerLot({"-r", "-o", "sortie", "-e", "1000", "-t", "CS", "src"}, dossier.chemin());
  EXPECT_EQ(r.codeSortie, 1) << r.sortie;
  for (const std::string nom : {"a", "sous/b"}) {
    EXPECT_TRUE(fs::exists(dossier / ("sortie/" + nom + ".ptp"))) << nom;
    EXPECT_TRUE(fs::exists(dossier / ("sortie/" + nom + ".ptv.log"))) << nom;
    EXPECT_FALSE(fs::exists(dossier / ("src/" + nom + ".ptp"))) << nom;
    EXPECT_FALSE(fs::exists(dossier / ("src/" + nom + ".ptv.log"))) << nom;
  }
  // The targets are those written beside the sources.
  const ResultatExe aCote = LancerLot({"-r", "-e", "1000", "-t", "CS", "src"}, dossier.chemin());
  EXPECT_EQ(LireFichier(dossier / "src/sous/b.ptp"), LireFichier(dossier / "sortie/sous/b.ptp"));
  EXPECT_EQ(LireFichier(dossier / "src/a.ptp"), LireFichier(dossier / "sortie/a.ptp"));
}

TEST(Lot, CibleNommeeEtVerification) {
  DossierTemporaire dossier;
  Generer("ptp", 300, 4, false, dossier / "a.ptp");
  const ResultatExe nommee = LancerLot({"-p", "ptv", "-c", "autre.ptv", "a.ptp"}, dossier.chemin());
  EXPECT_EQ(nommee.codeSortie, 0) << nommee.sortie;
  EXPECT_TRUE(fs::exists(dossier / "autre.ptv"));
  EXPECT_FALSE(fs::exists(dossier / "a.ptv"));
  const std::string journal = LireFichier(dossier / "a.ptp.log");

  // Check mode: the same log and counts, and the target left as it was.
  EcrireFichier(dossier / "autre.ptv", "avant\r\n");
  fs::remove(dossier / "a.ptp.log");
  const ResultatExe verif = LancerLot({"-n", "-p", "ptv", "-c", "autre.ptv", "a.ptp"}, dossier.chemin());
  EXPECT_EQ(verif.codeSortie, 0);
  EXPECT_EQ(LireFichier(dossier / "autre.ptv"), "avant\r\n");
  EXPECT_EQ(SansDate(LireFichier(dossier / "a.ptp.log")), SansDate(journal));
  EXPECT_EQ(LignesRapport(verif.sortie), LignesRapport(nommee.sortie));
  const ResultatExe sansCible = LancerLot({"--verifier", "-p", "ptv", "a.ptp"}, dossier.chemin());
  EXPECT_FALSE(fs::exists(dossier / "a.ptv"));
  EXPECT_TRUE(Temporaires(dossier.chemin()).empty());
}

// A target that is another source of the batch is never written.
TEST(Lot, CibleQuiEstUneAutreSource) {
  DossierTemporaire dossier;
  Generer("ptv", 20, 1, false, dossier / "a.ptv");
  Generer("ptp", 20, 2, false, dossier / "a.ptp");
  const std::string ptv = LireFichier(dossier / "a.ptv");
  const std::string ptp = LireFichier(dossier / "a.ptp");
  const ResultatExe r = LancerLot({"-p", "ptv", "."}, dossier.chemin());
  EXPECT_EQ(r.codeSortie, 2) << r.sortie;
  EXPECT_EQ(Issues(r.sortie), (std::vector<std::string>{"echec", "echec"})) << r.sortie;
  EXPECT_EQ(LireFichier(dossier / "a.ptv"), ptv);
  EXPECT_EQ(LireFichier(dossier / "a.ptp"), ptp);
}

// --- Report ---------------------------------------------------------------------

TEST(Lot, RapportJsonRelu) {
  DossierTemporaire dossier;
  Generer("ptv", 100, 1, false, dossier / "valide.ptv");
  Generer("ptv", 40, 2, true, dossier / "fautif.ptv");
  const bool octets = !SousWindows();  // a name that is not UTF-8
  if (octets) Generer("ptv", 10, 3, false, dossier / "\xE9t\xE9.ptv");
  std::vector<std::string> sources = {"valide.ptv", "fautif.ptv", "absente.ptv"};
  if (octets) sources.push_back("\xE9t\xE9.ptv");
  std::vector<std::string> arguments = {"--json", "rapport.json", "-j", "2", "-e", "1000", "-t", "CS"};
  arguments.insert(arguments.end(), sources.begin(), sources.end());
  const ResultatExe r = LancerLot(arguments, dossier.chemin());
  EXPECT_EQ(r.codeSortie, 2);

  const nlohmann::json rapport = nlohmann::json::parse(LireFichier(dossier / "rapport.json"));
  EXPECT_EQ(rapport["code_sortie"], 2);
  EXPECT_EQ(rapport["verification"], false);
  const auto& fichiers = rapport["fichiers"];
  ASSERT_EQ(fichiers.size(), sources.size());
  EXPECT_EQ(fichiers[0]["source"], "valide.ptv");
  EXPECT_EQ(fichiers[0]["cible"], "valide.ptp");
  EXPECT_EQ(fichiers[0]["journal"], "valide.ptv.log");
  EXPECT_EQ(fichiers[0]["conversion"], "ptv-ptp");
  EXPECT_EQ(fichiers[0]["lues"], 100);
  EXPECT_EQ(fichiers[0]["issue"], "converti");
  EXPECT_EQ(fichiers[1]["issue"], "rejets");
  EXPECT_GT(fichiers[1]["erreurs_lecture"].get<int>(), 40);
  EXPECT_EQ(fichiers[2]["issue"], "echec");
  EXPECT_NE(fichiers[2]["message"].get<std::string>().find("absente.ptv"), std::string::npos);
  if (octets) {
    EXPECT_EQ(fichiers[3]["source"], "\u00E9t\u00E9.ptv");
  }
  const auto& totaux = rapport["totaux"];
  EXPECT_EQ(totaux["fichiers"], sources.size());
  EXPECT_EQ(totaux["echec"], 1);
  EXPECT_EQ(totaux["rejets"], 1);
  EXPECT_EQ(totaux["lues"].get<int>(), 140 + (octets ? 10 : 0));
  // The text report still goes to standard output.
  EXPECT_EQ(ParSource(r.sortie).size(), sources.size());

  // "-": the JSON alone on standard output.
  const ResultatExe seul = LancerLot({"--json=-", "-e", "1000", "-t", "CS", "valide.ptv"}, dossier.chemin());
  EXPECT_EQ(seul.codeSortie, 0);
  EXPECT_EQ(nlohmann::json::parse(seul.sortie)["fichiers"][0]["issue"], "converti");
}

// Files come out in the order of the sources, whichever thread ends first.
TEST(Lot, OrdreDesSourcesSurPlusieursFils) {
  DossierTemporaire dossier;
  std::vector<std::string> sources;
  for (int i = 0; i < 8; ++i) {
    const std::string nom = "f" + std::to_string(i) + ".ptv";
    Generer("ptv", i % 2 == 0 ? 40000 : 10, i, false, dossier / nom);
    sources.push_back(nom);
  }
  std::vector<std::string> arguments = {"--fils=4", "-e", "1000", "-t", "CS"};
  arguments.insert(arguments.begin(), sources.rbegin(), sources.rend());
  const ResultatExe r = LancerLot(arguments, dossier.chemin());
  EXPECT_EQ(r.codeSortie, 0);
  std::vector<std::string> ordre;
  for (const auto& l : LignesRapport(r.sortie)) {
    if (!l.starts_with("Total")) ordre.push_back(Champs(l)[0]);
  }
  EXPECT_EQ(ordre, std::vector<std::string>(sources.rbegin(), sources.rend()));
  EXPECT_NE(r.sortie.find("Total: 8 fichier(s) : 8 converti(s)"), std::string::npos) << r.sortie;
}

// --- Interruption ---------------------------------------------------------------

// One thread; the second source is a named pipe kept open, so that the
// batch is in the middle of it when Ctrl-C comes.
TEST(Lot, InterrompuParCtrlC) {
  if (SousWindows()) GTEST_SKIP() << "no named pipe or SIGINT under wine";
  DossierTemporaire dossier;
  Generer("ptv", 100, 1, false, dossier / "a.ptv");
  Generer("ptv", 100, 2, false, dossier / "c.ptv");
  mkfifo((dossier / "b.ptv").c_str(), 0644);
  for (const std::string nom : {"b", "c"}) {
    EcrireFichier(dossier / (nom + ".ptp"), "avant\r\n");
    EcrireFichier(dossier / (nom + ".ptv.log"), "journal d'avant\r\n");
  }
  ProcessusQuillon lot({"-j", "1", "-e", "1000", "-t", "CS", "a.ptv", "b.ptv", "c.ptv"}, dossier.chemin(), kLot);
  ASSERT_TRUE(lot.AttendreSortie("\tconverti"));  // a.ptv done
  const int tuyau = open((dossier / "b.ptv").c_str(), O_WRONLY);
  const std::string lignes = LireFichier(dossier / "a.ptv");
  ASSERT_EQ(write(tuyau, lignes.data(), lignes.size()), static_cast<ssize_t>(lignes.size()));
  lot.Signaler(SIGINT);
  ASSERT_TRUE(lot.SignalPris(SIGINT));  // the stop is asked before the pipe ends
  close(tuyau);
  const ResultatExe r = lot.Attendre();

  EXPECT_EQ(r.codeSortie, 130) << r.sortie;
  EXPECT_EQ(Issues(r.sortie), (std::vector<std::string>{"converti", "interrompu", "non-traite"})) << r.sortie;
  EXPECT_TRUE(fs::exists(dossier / "a.ptp"));
  for (const std::string nom : {"b", "c"}) {
    EXPECT_EQ(LireFichier(dossier / (nom + ".ptp")), "avant\r\n") << nom;
    EXPECT_EQ(LireFichier(dossier / (nom + ".ptv.log")), "journal d'avant\r\n") << nom;
  }
  EXPECT_TRUE(Temporaires(dossier.chemin()).empty());
  EXPECT_NE(r.sortie.find("1 interrompu(s), 1 non trait"), std::string::npos) << r.sortie;
}

}  // namespace
}  // namespace quillon::test
