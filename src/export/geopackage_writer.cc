// GeoPackage 1.3, written with SQLite: the system rows, the contents with
// their extents, the geometry columns, one table per layer with standard
// geometry blobs (envelope included) and an R-tree index each. The index is
// filled once the rows are in, packed from the boxes of the points kept on
// the way (20 bytes a point): filled through the R*Tree module, even by one
// statement, it cost ten times the rows themselves. Its triggers are
// created after it.
//
// Each layer has its default style in the table `layer_styles`, where QGIS
// keeps the styles it saves into a GeoPackage (an attributes table of the
// contents), and which it applies when the layer is added: the points
// coloured by theme as in the check report, their numbers from a large
// scale on; the rejected lines as red crosses, their messages as map tips.
//
// The database is a file of the file services, written beside the final
// one (unnamed where the system can) without a rollback journal (a failed
// export is thrown away whole), then closed and put in place as every file
// written. Its page cache is 32 MiB (2 MiB by default), so that filling the
// index of a million points does not read its pages back from the system
// all the time.
#include <sqlite3.h>

#include <bit>
#include <cstring>

#include "export/rtree.h"
#include "export/sqlite_vfs.h"
#include "export/export_writer.h"
#include "export/styles.h"

namespace quillon {
namespace {

static_assert(std::endian::native == std::endian::little, "the geometry blobs are written little-endian");

constexpr const char* kSchema = R"(
PRAGMA journal_mode = OFF;
PRAGMA synchronous = OFF;
PRAGMA application_id = 1196444487;
PRAGMA user_version = 10300;
PRAGMA cache_size = -32768;
CREATE TABLE gpkg_spatial_ref_sys (srs_name TEXT NOT NULL, srs_id INTEGER PRIMARY KEY,
  organization TEXT NOT NULL, organization_coordsys_id INTEGER NOT NULL, definition TEXT NOT NULL,
  description TEXT);
INSERT INTO gpkg_spatial_ref_sys VALUES
  ('Undefined cartesian SRS', -1, 'NONE', -1, 'undefined', 'undefined cartesian coordinate reference system'),
  ('Undefined geographic SRS', 0, 'NONE', 0, 'undefined', 'undefined geographic coordinate reference system'),
  ('WGS 84 geodetic', 4326, 'EPSG', 4326, 'GEOGCS["WGS 84",DATUM["WGS_1984",SPHEROID["WGS 84",6378137,298.257223563,AUTHORITY["EPSG","7030"]],AUTHORITY["EPSG","6326"]],PRIMEM["Greenwich",0,AUTHORITY["EPSG","8901"]],UNIT["degree",0.0174532925199433,AUTHORITY["EPSG","9122"]],AXIS["Latitude",NORTH],AXIS["Longitude",EAST],AUTHORITY["EPSG","4326"]]',
   'longitude/latitude coordinates in decimal degrees on the WGS 84 spheroid');
CREATE TABLE gpkg_contents (table_name TEXT NOT NULL PRIMARY KEY, data_type TEXT NOT NULL,
  identifier TEXT UNIQUE, description TEXT DEFAULT '',
  last_change DATETIME NOT NULL DEFAULT (strftime('%Y-%m-%dT%H:%M:%fZ','now')),
  min_x DOUBLE, min_y DOUBLE, max_x DOUBLE, max_y DOUBLE, srs_id INTEGER,
  CONSTRAINT fk_gc_r_srs_id FOREIGN KEY (srs_id) REFERENCES gpkg_spatial_ref_sys(srs_id));
CREATE TABLE gpkg_geometry_columns (table_name TEXT NOT NULL, column_name TEXT NOT NULL,
  geometry_type_name TEXT NOT NULL, srs_id INTEGER NOT NULL, z TINYINT NOT NULL, m TINYINT NOT NULL,
  CONSTRAINT pk_geom_cols PRIMARY KEY (table_name, column_name),
  CONSTRAINT uk_gc_table_name UNIQUE (table_name),
  CONSTRAINT fk_gc_tn FOREIGN KEY (table_name) REFERENCES gpkg_contents(table_name),
  CONSTRAINT fk_gc_srs FOREIGN KEY (srs_id) REFERENCES gpkg_spatial_ref_sys (srs_id));
CREATE TABLE gpkg_extensions (table_name TEXT, column_name TEXT, extension_name TEXT NOT NULL,
  definition TEXT NOT NULL, scope TEXT NOT NULL,
  CONSTRAINT ge_tce UNIQUE (table_name, column_name, extension_name));
)";

// The table where QGIS looks for a layer's styles, as it makes it.
constexpr const char* kStyles = R"(
CREATE TABLE layer_styles (id INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL, f_table_catalog TEXT(256),
  f_table_schema TEXT(256), f_table_name TEXT(256), f_geometry_column TEXT(256), styleName TEXT(30),
  styleQML TEXT, styleSLD TEXT, useAsDefault BOOLEAN, description TEXT, owner TEXT(30), ui TEXT(30),
  update_time DATETIME DEFAULT (strftime('%Y-%m-%dT%H:%M:%fZ','now')));
INSERT INTO gpkg_contents (table_name, data_type, identifier, description, srs_id) VALUES
  ('layer_styles', 'attributes', 'layer_styles', '', 0);
)";

// The triggers that keep a layer's R-tree in step with its table.
std::string Declencheurs(const std::string& t) {
  const std::string r = "\"rtree_" + t + "_geom\"";
  const std::string q = "\"" + t + "\"";
  const std::string boite = " VALUES (NEW.fid, ST_MinX(NEW.geom), ST_MaxX(NEW.geom), ST_MinY(NEW.geom), "
                            "ST_MaxY(NEW.geom)); END;\n";
  return "CREATE TRIGGER \"rtree_" + t + "_geom_insert\" AFTER INSERT ON " + q +
         " WHEN (new.geom NOT NULL AND NOT ST_IsEmpty(NEW.geom)) BEGIN INSERT OR REPLACE INTO " + r + boite +
         "CREATE TRIGGER \"rtree_" + t + "_geom_update1\" AFTER UPDATE OF geom ON " + q +
         " WHEN OLD.fid = NEW.fid AND (NEW.geom NOTNULL AND NOT ST_IsEmpty(NEW.geom)) BEGIN INSERT OR REPLACE INTO " +
         r + boite + "CREATE TRIGGER \"rtree_" + t + "_geom_update2\" AFTER UPDATE OF geom ON " + q +
         " WHEN OLD.fid = NEW.fid AND (NEW.geom ISNULL OR ST_IsEmpty(NEW.geom)) BEGIN DELETE FROM " + r +
         " WHERE id = OLD.fid; END;\n" + "CREATE TRIGGER \"rtree_" + t + "_geom_update3\" AFTER UPDATE ON " + q +
         " WHEN OLD.fid != NEW.fid AND (NEW.geom NOTNULL AND NOT ST_IsEmpty(NEW.geom)) BEGIN DELETE FROM " + r +
         " WHERE id = OLD.fid; INSERT OR REPLACE INTO " + r + boite + "CREATE TRIGGER \"rtree_" + t +
         "_geom_update4\" AFTER UPDATE ON " + q +
         " WHEN OLD.fid != NEW.fid AND (NEW.geom ISNULL OR ST_IsEmpty(NEW.geom)) BEGIN DELETE FROM " + r +
         " WHERE id IN (OLD.fid, NEW.fid); END;\n" + "CREATE TRIGGER \"rtree_" + t + "_geom_delete\" AFTER DELETE ON " +
         q + " WHEN old.geom NOT NULL BEGIN DELETE FROM " + r + " WHERE id = OLD.fid; END;\n";
}

// A point's standard geometry blob: the header ("GP", version 0, flags for
// little-endian with an xy envelope, the system), the envelope, then the
// point in well-known binary.
struct BlobPoint {
  unsigned char octets[8 + 32 + 21];

  void Remplir(int32_t srs, double y, double x) {
    unsigned char* p = octets;
    *p++ = 'G';
    *p++ = 'P';
    *p++ = 0;
    *p++ = 0x03;
    std::memcpy(p, &srs, 4), p += 4;
    for (double v : {y, y, x, x}) std::memcpy(p, &v, 8), p += 8;
    const uint32_t typePoint = 1;
    *p++ = 1;
    std::memcpy(p, &typePoint, 4), p += 4;
    std::memcpy(p, &y, 8), p += 8;
    std::memcpy(p, &x, 8);
  }
};

class GeoPackage : public EcrivainExport {
 public:
  GeoPackage(const std::string& base, SystemeFichiers& systeme) : final_(base + ".gpkg"), systeme_(systeme) {}
  ~GeoPackage() override { Abandonner(); }

  bool Commencer(const EnteteExport& entete) override {
    // The geometries carry the system: it must be known now.
    if (!entete.systemeConnu) return Echouer(final_, RaisonFatale::Creation);
    fichier_ = systeme_.CreerEcriture(final_, {});
    if (!fichier_) return Echouer(final_, RaisonFatale::Creation);
    if (OuvrirBaseSur(*fichier_, &base_) != SQLITE_OK) return EchecSqlite(RaisonFatale::Creation);
    srs_ = entete.epsg != 0 ? entete.epsg : -1;
    std::string sql = kSchema;
    if (entete.epsg != 0 && entete.epsg != 4326) {
      const std::string_view definition = DefinitionSysteme(entete.epsg);
      const std::string code = TexteEntier(entete.epsg);
      sql += "INSERT INTO gpkg_spatial_ref_sys VALUES ('EPSG:" + code + "', " + code + ", 'EPSG', " + code + ", '" +
             (definition.empty() ? std::string("undefined") : std::string(definition)) + "', NULL);\n";
    }
    for (Couche couche : {Couche::Points, Couche::Rejets}) {
      const std::string t = NomCouche(couche);
      sql += "CREATE TABLE \"" + t + "\" (fid INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL, geom POINT";
      for (const Colonne& c : ColonnesDe(couche)) {
        sql += ", \"" + std::string(c.nom) + "\" " +
               (c.type == TypeChamp::Entier ? "INTEGER" : c.type == TypeChamp::Reel ? "REAL" : "TEXT");
      }
      sql += ");\nINSERT INTO gpkg_contents (table_name, data_type, identifier, srs_id) VALUES ('" + t +
             "', 'features', '" + t + "', " + TexteEntier(srs_) + ");\n" +
             "INSERT INTO gpkg_geometry_columns VALUES ('" + t + "', 'geom', 'POINT', " + TexteEntier(srs_) +
             ", 0, 0);\nCREATE VIRTUAL TABLE \"rtree_" + t + "_geom\" USING rtree(id, minx, maxx, miny, maxy);\n" +
             "INSERT INTO gpkg_extensions VALUES ('" + t +
             "', 'geom', 'gpkg_rtree_index', 'http://www.geopackage.org/spec120/#extension_rtree', 'write-only');\n";
    }
    sql += "BEGIN;\n";
    if (!Executer(sql)) return false;
    for (Couche couche : {Couche::Points, Couche::Rejets}) {
      const int i = static_cast<int>(couche);
      const std::string t = NomCouche(couche);
      std::string rangee = "(NULL, ?";
      for (std::size_t k = 0; k < ColonnesDe(couche).size(); ++k) rangee += ", ?";
      rangee += ")";
      std::string plusieurs = "INSERT INTO \"" + t + "\" VALUES " + rangee;
      for (std::size_t k = 1; k < kRangees; ++k) plusieurs += ", " + rangee;
      if (!Preparer("INSERT INTO \"" + t + "\" VALUES " + rangee, une_[i]) || !Preparer(plusieurs, plusieurs_[i])) {
        return false;
      }
    }
    return true;
  }

  bool Ecrire(const Enregistrement& e) override {
    const int i = static_cast<int>(e.couche);
    Attente& a = attente_[i];
    Rangee& r = a.rangees[a.nombre++];
    r.blob.Remplir(srs_, e.y, e.x);
    const std::size_t colonnes = ColonnesDe(e.couche).size();
    for (std::size_t k = 0; k < colonnes; ++k) {
      const Valeur& v = e.valeurs[k];
      Valeur& copie = r.valeurs[k];
      copie.present = v.present;
      copie.entier = v.entier;
      copie.reel = v.reel;
      copie.texte = v.texte;
    }
    emprises_[i].Ajouter(e.y, e.x);
    if (e.couche == Couche::Points) themes_.Ajouter(e.theme);
    boites_[i].push_back(BoiteDuPoint(static_cast<int64_t>(boites_[i].size()) + 1, e.y, e.x));
    return a.nombre < kRangees || Inserer(e.couche);
  }

  bool Terminer(const FinExport& fin) override {
    if (!Inserer(Couche::Points) || !Inserer(Couche::Rejets) || !Styles(fin.themes)) return false;
    std::string sql;
    for (Couche couche : {Couche::Points, Couche::Rejets}) {
      const Emprise& m = emprises_[static_cast<int>(couche)];
      const std::string t = NomCouche(couche);
      if (!m.vide) {
        sql += "UPDATE gpkg_contents SET min_x = " + TexteReel(m.yMin) + ", min_y = " + TexteReel(m.xMin) +
               ", max_x = " + TexteReel(m.yMax) + ", max_y = " + TexteReel(m.xMax) + " WHERE table_name = '" + t +
               "';\n";
      }
      sql += Declencheurs(t);
      if (!RemplirArbreR(base_, "rtree_" + t + "_geom", boites_[static_cast<int>(couche)])) {
        return EchecSqlite(RaisonFatale::Ecriture);
      }
    }
    sql += "COMMIT;\n";
    if (!Executer(sql)) return false;
    if (const int code = Fermer(); code != SQLITE_OK) {
      return Echouer(final_, RaisonFatale::Ecriture, sqlite3_errstr(code));
    }
    return true;
  }

  bool Placer() override {
    const std::unique_ptr<SupportFichier> fichier = std::move(fichier_);
    return fichier->Fermer() || Echouer(final_, RaisonFatale::Ecriture);
  }

  void Abandonner() override {
    Fermer();
    if (fichier_) fichier_->Abandonner();
    fichier_.reset();
  }

 private:
  // The file failed, and SQLite says why (its words are ASCII).
  bool EchecSqlite(RaisonFatale raison) {
    return Echouer(final_, raison, base_ != nullptr ? sqlite3_errmsg(base_) : "");
  }

  bool Executer(const std::string& sql) {
    return sqlite3_exec(base_, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK ||
           EchecSqlite(RaisonFatale::Ecriture);
  }

  // The table of the styles and a default style per layer.
  bool Styles(const ThemesTrouves& trouves) {
    if (!Executer(kStyles)) return false;
    sqlite3_stmt* s = nullptr;
    if (!Preparer("INSERT INTO layer_styles (f_table_catalog, f_table_schema, f_table_name, f_geometry_column, "
                  "styleName, styleQML, styleSLD, useAsDefault, description, owner, ui) "
                  "VALUES ('', '', ?, 'geom', ?, ?, '', 1, ?, '', NULL)",
                  s)) {
      return false;
    }
    bool ok = true;
    for (Couche couche : {Couche::Points, Couche::Rejets}) {
      const std::string t = NomCouche(couche);
      const std::string qml = couche == Couche::Points ? StylePoints(themes_, trouves) : StyleRejets();
      const char* description = couche == Couche::Points ? "Les points par thème, comme le rapport de contrôle"
                                                          : "Les lignes rejetées, en croix rouges";
      sqlite3_bind_text(s, 1, t.c_str(), -1, SQLITE_TRANSIENT);
      sqlite3_bind_text(s, 2, t.c_str(), -1, SQLITE_TRANSIENT);
      sqlite3_bind_text(s, 3, qml.data(), static_cast<int>(qml.size()), SQLITE_TRANSIENT);
      sqlite3_bind_text(s, 4, description, -1, SQLITE_STATIC);
      ok = Pas(s);
      if (!ok) break;
    }
    sqlite3_finalize(s);
    return ok;
  }

  bool Preparer(const std::string& sql, sqlite3_stmt*& s) {
    return sqlite3_prepare_v2(base_, sql.c_str(), -1, &s, nullptr) == SQLITE_OK ||
           EchecSqlite(RaisonFatale::Ecriture);
  }

  // The rows waiting for a layer: all at once when a whole statement's
  // worth, one after the other at the end.
  bool Inserer(Couche couche) {
    const int i = static_cast<int>(couche);
    Attente& a = attente_[i];
    const std::size_t colonnes = ColonnesDe(couche).size();
    const bool ensemble = a.nombre == kRangees;
    for (std::size_t n = 0; n < a.nombre; ++n) {
      sqlite3_stmt* s = ensemble ? plusieurs_[i] : une_[i];
      const int base = ensemble ? static_cast<int>(n * (colonnes + 1)) : 0;
      const Rangee& r = a.rangees[n];
      sqlite3_bind_blob(s, base + 1, r.blob.octets, sizeof r.blob.octets, SQLITE_STATIC);
      for (std::size_t k = 0; k < colonnes; ++k) {
        const Valeur& v = r.valeurs[k];
        const int p = base + static_cast<int>(k) + 2;
        if (!v.present) {
          sqlite3_bind_null(s, p);
        } else if (ColonnesDe(couche)[k].type == TypeChamp::Entier) {
          sqlite3_bind_int64(s, p, v.entier);
        } else if (ColonnesDe(couche)[k].type == TypeChamp::Reel) {
          sqlite3_bind_double(s, p, v.reel);
        } else {
          sqlite3_bind_text(s, p, v.texte.data(), static_cast<int>(v.texte.size()), SQLITE_STATIC);
        }
      }
      if ((!ensemble || n + 1 == kRangees) && !Pas(s)) return false;
    }
    a.nombre = 0;
    return true;
  }

  bool Pas(sqlite3_stmt* s) {
    const bool ok = sqlite3_step(s) == SQLITE_DONE;
    if (!ok) EchecSqlite(RaisonFatale::Ecriture);  // before the reset, which keeps the error all the same
    sqlite3_reset(s);
    return ok;
  }

  // SQLite's code.
  int Fermer() {
    for (sqlite3_stmt*& s : une_) sqlite3_finalize(s), s = nullptr;
    for (sqlite3_stmt*& s : plusieurs_) sqlite3_finalize(s), s = nullptr;
    if (base_ == nullptr) return SQLITE_MISUSE;
    const int code = sqlite3_close(base_);
    base_ = nullptr;
    return code;
  }

  std::string final_;
  SystemeFichiers& systeme_;
  std::unique_ptr<SupportFichier> fichier_;
  sqlite3* base_ = nullptr;
  // Rows go in kRangees at a time, by one statement: a statement costs
  // about as much as its rows, the sequence of an AUTOINCREMENT key being
  // read and written by each.
  static constexpr std::size_t kRangees = 64;
  struct Rangee {
    BlobPoint blob;
    std::array<Valeur, kColonnesMax> valeurs;
  };
  struct Attente {
    std::array<Rangee, kRangees> rangees;
    std::size_t nombre = 0;
  };
  sqlite3_stmt* une_[2] = {nullptr, nullptr};
  sqlite3_stmt* plusieurs_[2] = {nullptr, nullptr};
  Attente attente_[2];
  int32_t srs_ = -1;
  Emprise emprises_[2];
  ThemesTrouves themes_;  // of the points
  std::vector<BoiteIndex> boites_[2];  // each row's, its fid the rank of its insertion
};

}  // namespace

bool GeoPackageDisponible() { return true; }

std::unique_ptr<EcrivainExport> EcrivainGeoPackage(const std::string& base, SystemeFichiers& systeme) {
  return std::make_unique<GeoPackage>(base, systeme);
}

}  // namespace quillon
