#include "compare/comparison.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

#include "conversion/observer.h"
#include "formats/ptp_format.h"
#include "formats/pts_format.h"
#include "formats/ptv_format.h"
#include "formats/target_line.h"
#include "formats/value_lookups.h"
#include "io/display.h"
#include "io/journal.h"
#include "io/text_file.h"
#include "model/point.h"

namespace quillon {
namespace {

// Below any resolution of the files: a move of exactly the tolerance is no
// move, whatever the rounding of the differences.
constexpr double kEpsilon = 1e-6;

std::string_view Rogne(std::string_view t) {
  while (!t.empty() && t.front() == ' ') t.remove_prefix(1);
  while (!t.empty() && t.back() == ' ') t.remove_suffix(1);
  return t;
}

std::string_view RogneFin(std::string_view t) {
  while (!t.empty() && t.back() == ' ') t.remove_suffix(1);
  return t;
}

void Copier(char* zone, std::size_t largeur, std::string_view texte) {
  const std::size_t n = std::min(largeur, texte.size());
  std::memcpy(zone, texte.data(), n);
  std::memset(zone + n, ' ', largeur - n);
}

uint16_t OuiNon(char c) { return c == 'O' ? kOui : c == 'N' ? kNon : 0; }

float Precision(const TextePrecision& texte) {
  const std::string_view t = Rogne(texte.Vue());
  double v = 0;
  std::from_chars(t.data(), t.data() + t.size(), v);
  return static_cast<float>(v);
}

// The precisions that a value-to-precision conversion would write for the
// point's value code; false when the tables have none.
bool PrecisionsParValeur(const Point& p, int16_t classeEchelle, PointCompare& c, Journal& muet) {
  TextesPrecFiab textes;
  if (!EcrirePrecFiabPlan(textes, p.Theme, p.Valeur, classeEchelle, muet)) return false;
  c.precPlan = Precision(textes.PrecPlan);
  c.fiabPlan = OuiNon(textes.FiabPlan);
  c.precAlt = Precision(textes.PrecAlt);
  c.fiabAlt = OuiNon(textes.FiabAlt);  // 0 when the table gives none
  return true;
}

PointCompare Compacter(const Point& p, uint32_t ligne) {
  PointCompare c;
  c.y = p.CoordY, c.x = p.CoordX, c.altitude = p.Altitude;
  c.ligne = ligne;
  c.commune = p.NoCommune, c.plan = p.NoPlan, c.valeur = p.Valeur;
  PlacerADroite(c.numero, sizeof c.numero, Rogne(p.NoPoint).substr(0, sizeof c.numero));
  Copier(c.commentaire, sizeof c.commentaire, p.Commentaire);
  Copier(c.type, sizeof c.type, p.Type);
  c.theme = static_cast<uint8_t>(p.Theme);
  c.nature = static_cast<uint16_t>(p.Nature & 7);
  c.pfp3 = static_cast<uint16_t>(p.FichePFP3 & 3);
  return c;
}

bool Lire(FichierCompare& f, const ReglagesComparaison& r, bool enPrecisions, int64_t& sansPrecision,
          SystemeFichiers& systeme, ErreurFatale& erreur) {
  FluxTexte flux;
  if (!OuvrirFichierLecture(flux, f.chemin, systeme)) {
    erreur = {f.chemin, RaisonFatale::Ouverture};
    return false;
  }
  Journal journal;  // the readers' messages, heard, never written
  journal.SansFichier();
  journal.SuivreLignes(flux.CompteurLignes());
  RecueilLigne recueil;
  journal.Ecouter(&recueil);
  Journal muet;  // the lookups' messages: the comparison says it otherwise
  muet.SansFichier();
  const int32_t groupeDC = r.groupeTheme != 0 ? r.groupeTheme : kGroupeCS;

  Point point;
  std::string_view ligne;
  uint32_t numero = 0;
  while (!flux.AtEndOfStream() && flux.ReadLine(ligne)) {
    ++numero;
    recueil.Effacer();
    bool lue = false;
    switch (f.sorte) {
      case SorteFichier::Valeur:
        lue = LireLignePtVal(ligne, point, journal);
        break;
      case SorteFichier::Precision:
        lue = LireLignePtPrecFiab(ligne, point, journal);
        break;
      case SorteFichier::DC:
        lue = LireLignePtDC(ligne, groupeDC, point, journal);
        break;
    }
    if (!lue) {
      std::string messages;  // "; " between two, without their "LECTURE: "
      AjouterMessages(messages, recueil.Messages(), "; ", false);
      f.rejets.push_back({numero, std::move(messages), std::string(ligne.substr(0, 400))});
      continue;
    }
    PointCompare c = Compacter(point, numero);
    if (f.sorte == SorteFichier::Precision) {
      c.precPlan = static_cast<float>(point.PrecPlan), c.precAlt = static_cast<float>(point.PrecAlt);
      c.fiabPlan = static_cast<uint16_t>(point.FiabPlan & 3), c.fiabAlt = static_cast<uint16_t>(point.FiabAlt & 3);
    } else if (enPrecisions) {
      if (!PrecisionsParValeur(point, r.classeEchelle, c, muet)) c.sansPrecision = 1, ++sansPrecision;
      // A blank theme of nature 5 or 6 is written as the theme group.
      const bool substitution = point.Theme == kThemeBlanc && (point.Nature == 5 || point.Nature == 6);
      if (substitution && (r.groupeTheme == kGroupeCS || r.groupeTheme == kGroupeOD)) {
        c.theme = static_cast<uint8_t>(r.groupeTheme);
      }
    }
    f.points.push_back(c);
  }
  f.lignes = numero;
  const bool lu = !flux.EnErreur();
  FermerFichier(flux);
  if (!lu) erreur = {f.chemin, RaisonFatale::Lecture};
  return lu;
}

int ComparerIdentite(const PointCompare& a, const PointCompare& b) {
  if (a.theme != b.theme) return a.theme < b.theme ? -1 : 1;
  if (a.commune != b.commune) return a.commune < b.commune ? -1 : 1;
  if (a.plan != b.plan) return a.plan < b.plan ? -1 : 1;
  return std::memcmp(a.numero, b.numero, sizeof a.numero);
}

// The length of the run of equal identities from i.
uint32_t Suite(const std::vector<PointCompare>& p, std::size_t i) {
  std::size_t j = i + 1;
  while (j < p.size() && ComparerIdentite(p[i], p[j]) == 0) ++j;
  return static_cast<uint32_t>(j - i);
}

bool Differents(const char* a, const char* b, std::size_t n) { return RogneFin({a, n}) != RogneFin({b, n}); }

uint16_t Champs(const PointCompare& a, const PointCompare& b, const ReglagesComparaison& r, uint16_t compares) {
  uint16_t champs = 0;
  if (std::hypot(b.y - a.y, b.x - a.x) > r.tolerance + kEpsilon) champs |= kChampPosition;
  const bool altA = a.altitude != 0, altB = b.altitude != 0;
  if (altA != altB || (altA && std::fabs(b.altitude - a.altitude) > r.toleranceAltitude + kEpsilon)) {
    champs |= kChampAltitude;
  }
  if (a.nature != b.nature) champs |= kChampNature;
  if (a.valeur != b.valeur) champs |= kChampValeur;
  if (!a.sansPrecision && !b.sansPrecision) {
    if (a.precPlan != b.precPlan) champs |= kChampPrecPlan;
    if (a.fiabPlan != b.fiabPlan) champs |= kChampFiabPlan;
    if (altA && altB && a.fiabAlt != 0 && b.fiabAlt != 0) {
      if (a.precAlt != b.precAlt) champs |= kChampPrecAlt;
      if (a.fiabAlt != b.fiabAlt) champs |= kChampFiabAlt;
    }
  }
  if (a.pfp3 != b.pfp3) champs |= kChampPFP3;
  if (Differents(a.commentaire, b.commentaire, sizeof a.commentaire)) champs |= kChampCommentaire;
  if (Differents(a.type, b.type, sizeof a.type)) champs |= kChampType;
  return champs & compares;
}

// What both files carry.
uint16_t ChampsCompares(SorteFichier a, SorteFichier b) {
  uint16_t champs = kChampPosition | kChampAltitude | kChampNature | kChampCommentaire;
  if (a != SorteFichier::Precision && b != SorteFichier::Precision) champs |= kChampValeur;
  if (a == SorteFichier::Precision || b == SorteFichier::Precision) {
    champs |= kChampPrecPlan | kChampFiabPlan | kChampPrecAlt | kChampFiabAlt;
  }
  if (a != SorteFichier::DC && b != SorteFichier::DC) champs |= kChampPFP3 | kChampType;
  return champs;
}

// The order of the output within a category: the old file's lines first,
// by line number.
uint64_t Rang(const Comparaison& c, const Difference& d) {
  auto ancien = [&](uint32_t i) { return uint64_t{c.ancien.points[i].ligne}; };
  auto nouveau = [&](uint32_t i) { return (uint64_t{1} << 32) | c.nouveau.points[i].ligne; };
  switch (d.categorie) {
    case Categorie::Nouveau:
      return nouveau(d.nouveau);
    case Categorie::Doublon:
      return d.nombreAncien > 0 ? ancien(d.ancien) : nouveau(d.nouveau);
    case Categorie::Rejete:
      return d.ancien != kAucun ? uint64_t{c.ancien.rejets[d.ancien].ligne}
                                : (uint64_t{1} << 32) | c.nouveau.rejets[d.nouveau].ligne;
    default:
      return ancien(d.ancien);
  }
}

void Apparier(Comparaison& c) {
  const auto& a = c.ancien.points;
  const auto& b = c.nouveau.points;
  std::size_t i = 0, j = 0;
  while (i < a.size() || j < b.size()) {
    const int ordre = i == a.size() ? 1 : j == b.size() ? -1 : ComparerIdentite(a[i], b[j]);
    const uint32_t na = ordre <= 0 ? Suite(a, i) : 0, nb = ordre >= 0 ? Suite(b, j) : 0;
    Difference d;
    if (na > 1 || nb > 1) {
      d.categorie = Categorie::Doublon;
      if (na > 0) d.ancien = static_cast<uint32_t>(i);
      if (nb > 0) d.nouveau = static_cast<uint32_t>(j);
      d.nombreAncien = na, d.nombreNouveau = nb;
    } else if (na == 0) {
      d.categorie = Categorie::Nouveau, d.nouveau = static_cast<uint32_t>(j);
    } else if (nb == 0) {
      d.categorie = Categorie::Supprime, d.ancien = static_cast<uint32_t>(i);
    } else {
      d.ancien = static_cast<uint32_t>(i), d.nouveau = static_cast<uint32_t>(j);
      d.champs = Champs(a[i], b[j], c.reglages, c.champsCompares);
      d.categorie = d.champs & (kChampPosition | kChampAltitude) ? Categorie::Deplace
                    : d.champs != 0                              ? Categorie::Modifie
                                                                 : Categorie::Identique;
    }
    i += na, j += nb;
    ++c.totaux[static_cast<std::size_t>(d.categorie)];
    if (d.categorie != Categorie::Identique) c.differences.push_back(d);
  }
  for (uint32_t k = 0; k < c.ancien.rejets.size(); ++k) c.differences.push_back({Categorie::Rejete, 0, k, kAucun});
  for (uint32_t k = 0; k < c.nouveau.rejets.size(); ++k) c.differences.push_back({Categorie::Rejete, 0, kAucun, k});
  c.totaux[static_cast<std::size_t>(Categorie::Rejete)] =
      static_cast<int64_t>(c.ancien.rejets.size() + c.nouveau.rejets.size());
  std::sort(c.differences.begin(), c.differences.end(), [&](const Difference& x, const Difference& y) {
    if (x.categorie != y.categorie) return x.categorie < y.categorie;
    return Rang(c, x) < Rang(c, y);
  });
}

std::string Entier(int64_t n) { return std::to_string(n); }

}  // namespace

std::optional<SorteFichier> SortePourChemin(std::string_view chemin) {
  if (chemin.size() < 4 || chemin[chemin.size() - 4] != '.') return std::nullopt;
  std::string ext(chemin.substr(chemin.size() - 3));
  for (char& ch : ext) ch = static_cast<char>(ch >= 'A' && ch <= 'Z' ? ch - 'A' + 'a' : ch);
  if (ext == "ptv") return SorteFichier::Valeur;
  if (ext == "ptp") return SorteFichier::Precision;
  if (ext == "pts") return SorteFichier::DC;
  return std::nullopt;
}

const char* MotSorte(SorteFichier sorte) {
  switch (sorte) {
    case SorteFichier::Valeur:
      return "ptv";
    case SorteFichier::Precision:
      return "ptp";
    case SorteFichier::DC:
      return "pts";
  }
  return "";
}

std::string NomsChamps(uint16_t champs) {
  static constexpr const char* kNoms[kNombreChamps] = {
      "position",      "altitude", "nature",      "valeur", "precision-plan", "fiabilite-plan", "precision-alt",
      "fiabilite-alt", "pfp3",     "commentaire", "type"};
  std::string texte;
  for (int k = 0; k < kNombreChamps; ++k) {
    if ((champs & (1 << k)) == 0) continue;
    if (!texte.empty()) texte += ',';
    texte += kNoms[k];
  }
  return texte;
}

const char* MotCategorie(Categorie categorie) {
  static constexpr const char* kMots[kNombreCategories] = {"nouveau", "supprime", "deplace",  "modifie",
                                                           "doublon", "rejete",   "identique"};
  return kMots[static_cast<std::size_t>(categorie)];
}

bool Comparaison::Differe() const {
  for (int k = 0; k < kNombreCategories; ++k) {
    if (static_cast<Categorie>(k) != Categorie::Identique && totaux[static_cast<std::size_t>(k)] != 0) return true;
  }
  return false;
}

bool Comparer(const std::string& ancien, const std::string& nouveau, const ReglagesComparaison& reglages,
              Comparaison& c, ErreurFatale& erreur, SystemeFichiers& systeme) {
  c = Comparaison{};
  c.reglages = reglages;
  c.ancien.chemin = ancien, c.nouveau.chemin = nouveau;
  const auto sa = SortePourChemin(ancien), sn = SortePourChemin(nouveau);
  if (!sa || !sn) return false;
  c.ancien.sorte = *sa, c.nouveau.sorte = *sn;
  // A value code meets precisions through the tables, as a conversion
  // of its file would.
  const bool precA = *sa == SorteFichier::Precision, precN = *sn == SorteFichier::Precision;
  c.valeursEnPrecisions = precN && !precA ? 1 : precA && !precN ? 2 : 0;
  c.champsCompares = ChampsCompares(*sa, *sn);
  if (!Lire(c.ancien, reglages, c.valeursEnPrecisions == 1, c.sansPrecision, systeme, erreur)) return false;
  // A new delivery is mostly the old one: room for it at once.
  c.nouveau.points.reserve(c.ancien.points.size() + c.ancien.points.size() / 16);
  if (!Lire(c.nouveau, reglages, c.valeursEnPrecisions == 2, c.sansPrecision, systeme, erreur)) return false;
  const auto avant = [](const PointCompare& x, const PointCompare& y) {
    const int o = ComparerIdentite(x, y);
    return o != 0 ? o < 0 : x.ligne < y.ligne;
  };
  std::sort(c.ancien.points.begin(), c.ancien.points.end(), avant);
  std::sort(c.nouveau.points.begin(), c.nouveau.points.end(), avant);
  Apparier(c);
  return true;
}

std::string TexteComparaison(const Comparaison& c, std::string_view finLigne) {
  std::string s;
  auto lignes = [](const std::vector<PointCompare>& p, uint32_t debut, uint32_t nombre) {
    std::string t;
    for (uint32_t k = 0; k < nombre; ++k) {
      if (k) t += ",";
      t += Entier(p[debut + k].ligne);
    }
    return t;
  };
  for (const Difference& d : c.differences) {
    s += MotCategorie(d.categorie);
    s += '\t';
    if (d.categorie == Categorie::Rejete) {
      const bool ancien = d.ancien != kAucun;
      const LigneRejetee& r = ancien ? c.ancien.rejets[d.ancien] : c.nouveau.rejets[d.nouveau];
      s += ancien ? "\t" + Entier(r.ligne) + "\t" : "\t\t" + Entier(r.ligne);
      s += "\t\t\t\t\t" + r.messages;
    } else {
      const PointCompare* a = d.ancien != kAucun ? &c.ancien.points[d.ancien] : nullptr;
      const PointCompare* b = d.nouveau != kAucun ? &c.nouveau.points[d.nouveau] : nullptr;
      s += TexteIdentite(a != nullptr ? *a : *b) + '\t';
      if (d.categorie == Categorie::Doublon) {
        s += lignes(c.ancien.points, d.ancien, d.nombreAncien) + '\t' +
             lignes(c.nouveau.points, d.nouveau, d.nombreNouveau) + "\t\t\t\t\t";
      } else {
        s += (a != nullptr ? Entier(a->ligne) : "") + '\t' + (b != nullptr ? Entier(b->ligne) : "") + '\t';
        if (a != nullptr && b != nullptr) {
          s += TexteMetres(b->y - a->y, 3) + '\t' + TexteMetres(b->x - a->x, 3) + '\t';
          if (a->altitude != 0 && b->altitude != 0) s += TexteMetres(b->altitude - a->altitude, 3);
          s += '\t' + TexteMetres(std::hypot(b->y - a->y, b->x - a->x), 4) + '\t' + NomsChamps(d.champs);
        } else {
          s += "\t\t\t\t";
        }
      }
    }
    s += finLigne;
  }
  for (const Categorie k : {Categorie::Nouveau, Categorie::Supprime, Categorie::Deplace, Categorie::Modifie,
                            Categorie::Doublon, Categorie::Rejete, Categorie::Identique}) {
    s += std::string("total\t") + MotCategorie(k) + '\t' + Entier(c.totaux[static_cast<std::size_t>(k)]);
    s += finLigne;
  }
  s += std::string("champs\t") + NomsChamps(c.champsCompares);
  if (c.valeursEnPrecisions != 0) {
    s +=
        c.valeursEnPrecisions == 1 ? "\tprecisions de l'ancien par sa valeur" : "\tprecisions du nouveau par sa valeur";
  }
  s += finLigne;
  return s;
}

}  // namespace quillon
