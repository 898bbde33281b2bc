#include "report/html.h"

#include <algorithm>
#include <cmath>
#include <thread>
#include <unordered_map>

#include "io/encoding.h"
#include "io/translation.h"
#include "rapport_js.h"
#include "version.h"

namespace quillon {
namespace {

constexpr ScriptPage kScript{kScriptRapport, kHashScriptRapport};

// Above so many close pairs, the report gives one row per place.
constexpr std::size_t kProchesParLieu = 1'000;

// Flags of a drawn point, named in the data block for the script.
enum : uint8_t { kRejete = 1, kDoublon = 2, kProche = 4, kEloigne = 8, kIgnore = 16 };
constexpr std::pair<std::string_view, uint8_t> kDrapeaux[] = {
    {"rejete", kRejete}, {"doublon", kDoublon}, {"proche", kProche}, {"eloigne", kEloigne}, {"ignore", kIgnore}};
// What the note says of the flags whose points are all drawn exactly above
// kPointsTous, at most kParSorte of each, in the order of their bits.
constexpr const char* kNonDessines[] = {N_("%s points rejetés non dessinés."), N_("%s points en double non dessinés."),
                                        N_("%s points proches non dessinés."), N_("%s points éloignés non dessinés.")};

std::string Nombre(int64_t n) { return std::to_string(n); }

// A line's identity, UTF-8; "?" when it could not be read.
std::string Identite(const Collecte& c, const LigneCollectee& l) {
  if (!l.Identite()) return "?";
  return Cp1252VersUtf8(TexteIdentite(l.theme, l.commune, l.plan, c.NumeroPoint(l)));
}

// Where the points are drawn; above kPointsTous, the cells of the density
// picture too.
struct Cadre {
  RepereCarte repere;
  bool tous = true;
  int64_t nx = 0, ny = 0;
};

Cadre CadreDe(const Collecte& c, const Controles& k) {
  Cadre d{RepereCarte(k.etendueDessin.value_or(Etendue{}))};
  d.tous = c.Lignes().size() - k.sansCoordonnees.size() <= kPointsTous;
  if (!d.tous) {
    // 512 cells along the longer side, square cells.
    const int64_t w = d.repere.largeur, h = d.repere.hauteur;
    d.nx = w >= h ? 512 : std::max<int64_t>(1, std::min<int64_t>(512, (512 * w + h - 1) / std::max<int64_t>(h, 1)));
    d.ny = w >= h ? std::max<int64_t>(1, std::min<int64_t>(512, (512 * h + w - 1) / std::max<int64_t>(w, 1))) : 512;
  }
  return d;
}

// What the report takes from every line, in one pass (two halves at once
// for a large file): each line's flags, the rejected lines, and the
// density of the points above kPointsTous.
struct Passage {
  std::vector<uint8_t> drapeaux;
  std::vector<uint32_t> rejetees;
  std::vector<uint32_t> densite;  // by cell, row after row
};

void Parcourir(const Collecte& c, const Cadre& d, std::size_t debut, std::size_t fin, std::vector<uint8_t>& drapeaux,
               Passage& p) {
  auto cellule = [](double v, int64_t mm, int64_t n) {
    const double t = mm > 0 ? v * 1000 * static_cast<double>(n) / static_cast<double>(mm) : 0;
    return t >= static_cast<double>(n - 1) ? n - 1 : t > 0 ? static_cast<int64_t>(t) : 0;
  };
  const RepereCarte& r = d.repere;
  if (!d.tous) p.densite.assign(static_cast<std::size_t>(d.nx * d.ny), 0);
  for (std::size_t i = debut; i < fin; ++i) {
    const LigneCollectee& l = c.Lignes()[i];
    if (l.Issue() == IssueLigne::Rejetee) drapeaux[i] |= kRejete, p.rejetees.push_back(static_cast<uint32_t>(i));
    if (l.Issue() == IssueLigne::Ignoree) drapeaux[i] |= kIgnore;
    if (!d.tous && l.Coordonnees()) {
      ++p.densite[static_cast<std::size_t>(cellule(l.x - r.ox, r.hauteur, d.ny) * d.nx +
                                           cellule(l.y - r.oy, r.largeur, d.nx))];
    }
  }
}

Passage Parcourir(const Collecte& c, const Controles& k, const Cadre& d) {
  const std::size_t n = c.Lignes().size();
  Passage p;
  p.drapeaux.resize(n);
  if (n < 200'000) {
    Parcourir(c, d, 0, n, p.drapeaux, p);
  } else {
    // Each half writes its own flags of the one array.
    Passage second;
    std::thread apres([&] { Parcourir(c, d, n / 2, n, p.drapeaux, second); });
    Parcourir(c, d, 0, n / 2, p.drapeaux, p);
    apres.join();
    p.rejetees.insert(p.rejetees.end(), second.rejetees.begin(), second.rejetees.end());
    for (std::size_t i = 0; i < p.densite.size(); ++i) p.densite[i] += second.densite[i];
  }
  for (uint32_t i : k.membresDoublons) p.drapeaux[i] |= kDoublon;
  for (const PointsProches& q : k.proches) p.drapeaux[q.a] |= kProche, p.drapeaux[q.b] |= kProche;
  for (uint32_t i : k.eloignes) p.drapeaux[i] |= kEloigne;
  return p;
}

// The lines drawn, in order: every one with coordinates up to
// kPointsTous, and above only those with a flag.
template <typename F>
void PourChaqueDessinee(const Collecte& c, const Cadre& d, const Passage& passage, F f) {
  const auto& lignes = c.Lignes();
  for (std::size_t i = 0; i < lignes.size(); ++i) {
    if ((d.tous || passage.drapeaux[i] != 0) && lignes[i].Coordonnees()) f(i, lignes[i]);
  }
}

// "t": the themes of the points drawn, in the order of their numbers; by
// theme, its rank among them.
std::array<int, 256> AjouterThemes(std::string& s, const Collecte& c, const Cadre& d, const Passage& passage) {
  std::array<int, 256> themes{};  // by theme: its rank, plus one
  PourChaqueDessinee(c, d, passage, [&](std::size_t, const LigneCollectee& l) { themes[l.theme] = 1; });
  s += "\"t\":[";
  int rang = 0;
  for (std::size_t t = 0; t < themes.size(); ++t) {
    if (themes[t] == 0) continue;
    if (rang > 0) s += ',';
    themes[t] = ++rang;
    AjouterTexteJson(s, Traduire(TexteTheme(static_cast<int>(t))));
  }
  s += "]";
  return themes;
}

// "p" and "id": each point drawn (Y and X in millimetres, line number,
// theme's rank, flags) and its identity; above kPointsTous, at most
// kParSorte of each flag. By flag, the points left out.
std::array<std::size_t, 4> AjouterPoints(std::string& s, const Collecte& c, const Cadre& d, const Passage& passage,
                                         const std::array<int, 256>& themes) {
  std::string ids;
  std::array<std::size_t, 4> pris{}, laisses{};
  bool premier = true;
  s += ",\"p\":[";
  PourChaqueDessinee(c, d, passage, [&](std::size_t i, const LigneCollectee& l) {
    const uint8_t drapeaux = passage.drapeaux[i];
    if (!d.tous) {
      bool garde = false;
      for (std::size_t b = 0; b < 4; ++b) {
        if ((drapeaux & (1 << b)) == 0) continue;
        if (pris[b] < kParSorte) garde = true, ++pris[b];
        else ++laisses[b];
      }
      if (!garde) return;
    }
    if (!premier) s += ',', ids += ',';
    premier = false;
    s += Nombre(d.repere.Y(l.y)) + ',' + Nombre(d.repere.X(l.x)) + ',' + Nombre(static_cast<int64_t>(i) + 1) + ',' +
         Nombre(themes[l.theme] - 1) + ',' + Nombre(drapeaux);
    AjouterTexteJson(ids, Identite(c, l));
  });
  s += "],\"id\":[" + ids + "]";
  return laisses;
}

// "d": every point's cell in the density picture, counted.
void AjouterDensite(std::string& s, const Cadre& d, const Passage& passage) {
  s += ",\"d\":{\"n\":[" + Nombre(d.nx) + "," + Nombre(d.ny) + "],\"c\":[";
  bool premier = true;
  for (std::size_t i = 0; i < passage.densite.size(); ++i) {
    if (passage.densite[i] == 0) continue;
    if (!premier) s += ',';
    premier = false;
    s += Nombre(static_cast<int64_t>(i)) + ',' + Nombre(passage.densite[i]);
  }
  s += "]}";
}

// The data block of the map; above kPointsTous, the note that says what
// it leaves out.
std::string Donnees(const Collecte& c, const Cadre& d, const Passage& passage, std::string& note) {
  std::string s = "{";
  d.repere.AjouterJson(s);
  s += ",";
  const std::array<int, 256> themes = AjouterThemes(s, c, d, passage);
  s += ",\"drapeaux\":{";
  for (const auto& [nom, bit] : kDrapeaux) {
    if (bit != kRejete) s += ',';
    AjouterTexteJson(s, nom);
    s += ':' + Nombre(bit);
  }
  s += "}";
  const std::array<std::size_t, 4> laisses = AjouterPoints(s, c, d, passage, themes);
  if (!d.tous) {
    AjouterDensite(s, d, passage);
    note = Formater("Plus de %s points : leur densité est dessinée, et chaque point rejeté, en double, proche ou "
                    "éloigné exactement.",
                    {Nombre(kPointsTous)});
    for (std::size_t b = 0; b < 4; ++b) {
      if (laisses[b] != 0) note += " " + Formater(kNonDessines[b], {Nombre(static_cast<int64_t>(laisses[b]))});
    }
  }
  return s + "}";
}

// The verdict, what the run tells besides, what was converted how, and the
// summary.
void AjouterTete(std::string& s, const EnteteRapport& t) {
  s.append("<h1>").append(Traduire("Rapport de contrôle")).append("</h1>\n");
  switch (t.verdict) {
    case Verdict::SansRejet: AjouterVerdict(s, "ok", Traduire("Aucune ligne rejetée")); break;
    case Verdict::Rejets:
      AjouterVerdict(s, "rejets", Formater("%s ligne(s) rejetée(s)", {Nombre(t.lignesRejetees)}));
      break;
    case Verdict::Echec:
      AjouterVerdict(s, "echec", Formater("Échec : %s", {EchapperHtml(CauseTraduite(t.echec))}));
      break;
  }
  for (const std::string& a : t.avertissements) {
    s += "<p class=\"avertissement\">" + EchapperHtml(Traduire(std::string_view(a))) + "</p>\n";
  }
  AjouterEntete(s, {{Traduire("Programme"), EchapperHtml(t.programme) + " " + kTexteVersion},
                    {Traduire("Date"), HtmlCp1252(t.date)},
                    {Traduire("Source"), HtmlNom(t.source)},
                    {Traduire("Cible"), HtmlNom(t.cible)},
                    {Traduire("Journal"), HtmlNom(t.journal)},
                    {Traduire("Conversion"),
                     EchapperHtml(t.conversion) + (t.options.empty() ? "" : " " + EchapperHtml(t.options))}});
  s += "<pre id=\"bilan\">";
  for (const std::string& ligne : LignesBilan(t.bilan)) s += EchapperHtml(ligne) + "\n";
  s += "</pre>\n";
}

// A row that selects its line's point.
std::string Rangee(uint32_t i) { return "<tr data-l=\"" + Nombre(int64_t{i} + 1) + "\">"; }
std::string CaseLigne(uint32_t i) { return Cellule(Nombre(int64_t{i} + 1), true); }
std::string CaseIdentite(const Collecte& c, uint32_t i) { return Cellule(EchapperHtml(Identite(c, c.Lignes()[i]))); }

// Each rejected line: its fields and messages, and the source line when
// it was kept.
void TableRejets(std::string& s, const Collecte& c, const std::vector<uint32_t>& rejetees) {
  std::size_t source = 0;
  AjouterTable(s, "rejets", Traduire("Lignes rejetées"),
               Entetes({N_("Ligne"), N_("Identité"), N_("Champ"), N_("Message"), N_("Ligne source")}), rejetees.size(),
               [&](std::size_t r) {
                 const uint32_t i = rejetees[r];
                 std::string champs, messages;
                 for (std::size_t m = c.Lignes()[i].premierMessage; m < c.FinMessages(i); ++m) {
                   const MessageCollecte& msg = c.Messages()[m];
                   if (!champs.empty()) champs += "<br>", messages += "\n";
                   champs += HtmlCp1252(c.Champ(msg));
                   messages += HtmlCp1252(c.TexteMessage(msg));
                 }
                 while (source < c.Sources().size() && c.Sources()[source].ligne < i) ++source;
                 std::string texte;
                 if (source < c.Sources().size() && c.Sources()[source].ligne == i) {
                   texte = HtmlCp1252(c.TexteSource(c.Sources()[source]));
                 }
                 s += Rangee(i) + CaseLigne(i) + CaseIdentite(c, i) + Cellule(champs) + "<td><pre>" + messages +
                      "</pre></td><td><pre>" + texte + "</pre></td></tr>\n";
               });
}

void TableProches(std::string& s, const Collecte& c, const Controles& k) {
  AjouterTable(s, "proches", Formater("Points proches (%s m au plus)", {TexteMetresCourt(k.tolerance)}),
               Entetes({N_("Ligne"), N_("Identité"), N_("Ligne"), N_("Identité"), N_("Distance")}), k.proches.size(),
               [&](std::size_t r) {
                 const PointsProches& p = k.proches[r];
                 s += Rangee(p.a) + CaseLigne(p.a) + CaseIdentite(c, p.a) + CaseLigne(p.b) + CaseIdentite(c, p.b) +
                      Cellule(TexteMetresCourt(p.distance), true) + "</tr>\n";
               });
}

// The close pairs by the place of their first point, in the order of
// their first lines: how many pairs, the largest distance, and the first
// lines of the pairs, smallest first.
struct LieuProche {
  uint32_t premiere = 0;
  int64_t paires = 0;
  double distance = 0;
  std::vector<uint32_t> lignes;
};

std::vector<LieuProche> LieuxProches(const Collecte& c, const Controles& k) {
  std::vector<LieuProche> lieux;
  struct Hache {
    std::size_t operator()(const std::pair<int64_t, int64_t>& p) const {
      return std::hash<uint64_t>()(static_cast<uint64_t>(p.first) * 1'000'003u + static_cast<uint64_t>(p.second));
    }
  };
  std::unordered_map<std::pair<int64_t, int64_t>, std::size_t, Hache> parPlace;
  auto garder = [](std::vector<uint32_t>& v, uint32_t i) {
    const auto o = std::lower_bound(v.begin(), v.end(), i);
    if (o != v.end() && *o == i) return;
    if (v.size() < kPremieresLignes) v.insert(o, i);
    else if (o != v.end()) v.pop_back(), v.insert(std::lower_bound(v.begin(), v.end(), i), i);
  };
  for (const PointsProches& p : k.proches) {
    const LigneCollectee& l = c.Lignes()[p.a];
    const auto [o, nouveau] = parPlace.try_emplace({Millimetres(l.y), Millimetres(l.x)}, lieux.size());
    if (nouveau) lieux.push_back({p.a, 0, 0, {}});
    LieuProche& lieu = lieux[o->second];
    ++lieu.paires;
    lieu.distance = std::max(lieu.distance, p.distance);
    garder(lieu.lignes, p.a), garder(lieu.lignes, p.b);
  }
  return lieux;
}

void TableProchesParLieu(std::string& s, const Collecte& c, const Controles& k) {
  const std::vector<LieuProche> lieux = LieuxProches(c, k);
  AjouterTable(s, "proches",
               Formater("Points proches par place (%1$s m au plus, %2$s paires)",
                        {TexteMetresCourt(k.tolerance), Nombre(static_cast<int64_t>(k.proches.size()))}),
               Entetes({"Y", "X", N_("Paires"), N_("Distance max."), N_("Premières lignes")}), lieux.size(),
               [&](std::size_t r) {
                 const LieuProche& lieu = lieux[r];
                 const LigneCollectee& l = c.Lignes()[lieu.premiere];
                 std::string lignes;
                 for (uint32_t i : lieu.lignes) lignes.append(lignes.empty() ? "" : ", ").append(Nombre(int64_t{i} + 1));
                 s += Rangee(lieu.premiere) + Cellule(TexteMetresCourt(l.y, 3), true) +
                      Cellule(TexteMetresCourt(l.x, 3), true) + Cellule(Nombre(lieu.paires), true) +
                      Cellule(TexteMetresCourt(lieu.distance), true) + Cellule(lignes) + "</tr>\n";
               });
}

// Duplicates (the first lines of each), close points and far points.
void TablesPoints(std::string& s, const Collecte& c, const Controles& k) {
  AjouterTable(s, "doublons", Traduire("Points en double"), Entetes({N_("Lignes"), N_("Identité"), "ΔY", "ΔX", "ΔH"}),
               k.doublons.size(), [&](std::size_t r) {
                 const Doublon& d = k.doublons[r];
                 std::string liste;
                 const uint32_t montres = std::min<uint32_t>(d.nombre, kPremieresLignes);
                 for (uint32_t m = d.debut; m < d.debut + montres; ++m) {
                   liste.append(m > d.debut ? ", " : "").append(Nombre(k.membresDoublons[m] + 1));
                 }
                 if (montres < d.nombre) liste += Formater("… (%s lignes)", {Nombre(d.nombre)});
                 const uint32_t premier = k.membresDoublons[d.debut];
                 s += Rangee(premier) + Cellule(liste) + CaseIdentite(c, premier) +
                      Cellule(TexteMetresCourt(d.dy), true) + Cellule(TexteMetresCourt(d.dx), true) +
                      Cellule(d.dh ? TexteMetresCourt(*d.dh) : "", true) + "</tr>\n";
               });
  if (k.proches.size() > kProchesParLieu) TableProchesParLieu(s, c, k);
  else TableProches(s, c, k);
  if (k.prochesTronques) {
    AjouterNote(s, Formater("Recherche des points proches arrêtée après %s paires : il y en a d'autres.",
                            {Nombre(static_cast<int64_t>(k.proches.size()))}));
  }
  AjouterTable(s, "eloignes", Traduire("Points éloignés"), Entetes({N_("Ligne"), N_("Identité"), "Y", "X"}),
               k.eloignes.size(), [&](std::size_t r) {
                 const uint32_t i = k.eloignes[r];
                 const LigneCollectee& l = c.Lignes()[i];
                 s += Rangee(i) + CaseLigne(i) + CaseIdentite(c, i) + Cellule(TexteMetresCourt(l.y, 3), true) +
                      Cellule(TexteMetresCourt(l.x, 3), true) + "</tr>\n";
               });
}

// Lines without coordinates, the counts by theme and by rejected field, and
// the extent.
void TablesComptes(std::string& s, const Controles& k) {
  AjouterTable(s, "sans", Traduire("Lignes sans coordonnées lisibles"), Entetes({N_("Ligne")}),
               k.sansCoordonnees.size(),
               [&](std::size_t r) { s += "<tr>" + CaseLigne(k.sansCoordonnees[r]) + "</tr>\n"; });
  AjouterTable(s, "themes", Traduire("Par thème"),
               Entetes({N_("Thème"), N_("Converties"), N_("Ignorées"), N_("Rejetées")}),
               k.parTheme.size(), [&](std::size_t r) {
                 const ParTheme& p = k.parTheme[r];
                 s += "<tr>" + Cellule(Traduire(TexteTheme(p.theme)));
                 for (const int64_t n : p.nombres) s += Cellule(Nombre(n), true);
                 s += "</tr>\n";
               });
  AjouterTable(s, "champs", Traduire("Par champ rejeté"), Entetes({N_("Champ"), N_("Lignes"), N_("Premières lignes")}),
               k.parChamp.size(), [&](std::size_t r) {
                 const ParChamp& p = k.parChamp[r];
                 std::string premieres;
                 for (uint32_t i : p.premieres) {
                   premieres.append(premieres.empty() ? "" : ", ").append(Nombre(int64_t{i} + 1));
                 }
                 s += "<tr>" + Cellule(HtmlCp1252(p.champ)) + Cellule(Nombre(p.lignes), true) + Cellule(premieres) +
                      "</tr>\n";
               });
  if (!k.etendue) return;
  const Etendue& e = *k.etendue;
  auto metres = [](std::optional<double> v) { return Cellule(v ? TexteMetresCourt(*v, 3) : "", true); };
  s.append("<h2>").append(Traduire("Étendue des points convertis")).append("</h2>\n");
  s += "<table id=\"etendue\"><tr><th></th><th>min</th><th>max</th></tr><tr><th>Y</th>" + metres(e.yMin) +
       metres(e.yMax) + "</tr><tr><th>X</th>" + metres(e.xMin) + metres(e.xMax) + "</tr><tr><th>" +
       Traduire("Altitude") + "</th>" + metres(e.altitudeMin) + metres(e.altitudeMax) + "</tr></table>\n";
}

// What the collect could not keep whole, said in one note, each kind only
// when it happened.
void NoteTronques(std::string& s, const Tronques& t) {
  if (t.Total() == 0) return;
  std::string note = Traduire("Le rapport n'a pas tout gardé :");
  const std::pair<int64_t, const char*> parties[] = {
      {t.textes, N_("textes raccourcis : %s")},
      {t.sources, N_("lignes rejetées sans leur texte : %s")},
      {t.pool + t.fixes, N_("messages sans leur texte : %s")},
  };
  const char* separateur = " ";
  for (const auto& [nombre, quoi] : parties) {
    if (nombre == 0) continue;
    note.append(separateur).append(Formater(quoi, {Nombre(nombre)}));
    separateur = Traduire(" ; ");
  }
  AjouterNote(s, note + ".");
}

}  // namespace

std::string RapportHtml(const EnteteRapport& t, const Collecte& c, const Controles& k) {
  const Cadre cadre = CadreDe(c, k);
  const Passage passage = Parcourir(c, k, cadre);
  std::string s = DebutPage(Formater("Rapport de contrôle – %s", {HtmlNom(t.source)}), &kScript);
  AjouterTete(s, t);
  AjouterToile(s);
  std::string note;
  const std::string donnees = Donnees(c, cadre, passage, note);
  if (!note.empty()) AjouterNote(s, EchapperHtml(note));
  NoteTronques(s, c.Tronquages());
  TableRejets(s, c, passage.rejetees);
  TablesPoints(s, c, k);
  TablesComptes(s, k);
  FinirPage(s, donnees, &kScript);
  return s;
}

}  // namespace quillon
