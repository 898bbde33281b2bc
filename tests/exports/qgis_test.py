"""QGIS opens the GeoPackage of quillon-lot styled as the check report.

A small file of three themes with two rejected lines: both layers load
with their default style (the points by category on `theme`, in the
colours of the report's own table, their numbers as labels from 1:2500 on;
the rejected lines as red crosses, their messages as map tips), and the
map QGIS renders has red where the rejected lines are and nowhere else,
and each point in its theme's colour.

    qgis_test.py QUILLON-LOT RAPPORT_JS [IMAGE.png]

IMAGE.png keeps the map rendered. Exits 77 (skipped) without QGIS's Python
bindings (package python3-qgis).
"""
import os
import re
import subprocess
import sys
import tempfile

os.environ.setdefault("QT_QPA_PLATFORM", "offscreen")
try:
    from qgis.core import (QgsApplication, QgsCategorizedSymbolRenderer, QgsCoordinateReferenceSystem,
                           QgsMapRendererSequentialJob, QgsMapSettings, QgsPointXY, QgsRectangle,
                           QgsVectorLayer)
    from qgis.PyQt.QtCore import QSize
    from qgis.PyQt.QtGui import QColor
except ImportError as e:
    print(f"ignoré : QGIS n'est pas installé pour ce Python (paquet python3-qgis) : {e}")
    sys.exit(77)

THEMES = ["01", "06", "02"]
REJETEES = {(1, 1), (4, 3)}  # grid places of the lines whose commune is 0


def ligne(n, y, x, theme, commune):
    s = str(n)
    return (theme + commune + "1502" + s.rjust(12) + " 2OR 77.  " + f"{y:.3f}".rjust(11) + " " +
            f"{x:.3f}".rjust(11) + " 2541.360        commentaire   AB\r\n")


def source(chemin):
    """6 x 5 points 20 m apart; returns {line number: (y, x, theme, rejected)}."""
    lignes, texte = {}, ""
    for i in range(6):
        for j in range(5):
            n = len(lignes) + 1
            y, x, theme, rejetee = 2600000 + i * 20, 1200000 + j * 20, THEMES[(i + j) % 3], (i, j) in REJETEES
            lignes[n] = (y, x, int(theme), rejetee)
            texte += ligne(n, y, x, theme, "   0" if rejetee else " 236")
    with open(chemin, "w", newline="") as f:
        f.write(texte)
    return lignes


def couleurs_du_rapport(rapport_js):
    texte = open(rapport_js, encoding="utf-8").read()
    table = re.search(r"var COUL = \[([^\]]*)\]", texte).group(1)
    return [QColor(c) for c in re.findall(r"'(#[0-9a-f]{6})'", table)]


def verifier_styles(points, rejets, attendues, echec):
    r = points.renderer()
    if not isinstance(r, QgsCategorizedSymbolRenderer) or r.classAttribute() != "theme":
        echec(f"points : rendu {r.type()}, pas par catégorie sur theme")
    couleurs = {int(c.value()): c.symbol().color().name() for c in r.categories()}
    if couleurs != attendues:
        echec(f"points : couleurs {couleurs}, {attendues} attendues")
    etiquettes = points.labeling().settings() if points.labelsEnabled() and points.labeling() else None
    if etiquettes is None or etiquettes.fieldName != "numero" or not etiquettes.scaleVisibility or \
            etiquettes.minimumScale != 2500:
        echec("points : pas d'étiquettes des numéros à partir du 1:2500")
    s = rejets.renderer().symbol()
    couche = s.symbolLayer(0)
    if rejets.renderer().type() != "singleSymbol" or couche.layerType() != "SimpleMarker" or \
            couche.shape() != couche.Cross2 or couche.strokeColor().name() != "#ff0000":
        echec("rejets : pas de croix rouges")
    if '"messages"' not in rejets.mapTipTemplate():
        echec(f"rejets : infobulle {rejets.mapTipTemplate()!r} sans les messages")


def rendre(couches, etendue, image):
    reglages = QgsMapSettings()
    reglages.setLayers(couches)
    reglages.setDestinationCrs(QgsCoordinateReferenceSystem("EPSG:2056"))
    reglages.setOutputSize(QSize(480, 400))
    reglages.setBackgroundColor(QColor("white"))
    reglages.setExtent(etendue)
    travail = QgsMapRendererSequentialJob(reglages)
    travail.start()
    travail.waitForFinished()
    rendu = travail.renderedImage()
    if image:
        rendu.save(image, "PNG")
    return rendu, reglages.mapToPixel()


def rouge(c):
    return c.red() > 200 and c.green() < 80 and c.blue() < 80


def verifier_carte(rendu, pixel, lignes, attendues, echec):
    centres = {n: pixel.transform(QgsPointXY(y, x)) for n, (y, x, _, _) in lignes.items()}
    croix = [centres[n] for n, l in lignes.items() if l[3]]
    rouges_loin = 0
    for px in range(rendu.width()):
        for py in range(rendu.height()):
            if rouge(QColor(rendu.pixel(px, py))) and \
                    all(abs(px - c.x()) > 12 or abs(py - c.y()) > 12 for c in croix):
                rouges_loin += 1
    if rouges_loin:
        echec(f"{rouges_loin} pixels rouges loin des lignes rejetées")
    for n, (y, x, theme, rejetee) in lignes.items():
        c = centres[n]
        autour = [QColor(rendu.pixel(int(c.x()) + dx, int(c.y()) + dy)) for dx in range(-3, 4) for dy in range(-3, 4)]
        if rejetee and not any(rouge(p) for p in autour):
            echec(f"ligne {n} rejetée : pas de croix rouge")
        if not rejetee and attendues[theme] not in {p.name() for p in autour}:
            echec(f"ligne {n} : pas de point {attendues[theme]} (thème {theme})")


def main():
    lot, rapport_js = os.path.abspath(sys.argv[1]), sys.argv[2]
    image = sys.argv[3] if len(sys.argv) > 3 else None
    app = QgsApplication([], False)
    app.initQgis()
    echecs = []
    with tempfile.TemporaryDirectory() as d:
        lignes = source(os.path.join(d, "petit.ptv"))
        fin = subprocess.run([lot, "-e", "1000", "-t", "CS", "--srs=EPSG:2056", "--exporter=gpkg", "petit.ptv"],
                             cwd=d, stdout=subprocess.DEVNULL)
        if fin.returncode != 1:
            print(f"ÉCHEC: quillon-lot a fini par {fin.returncode}, 1 attendu (des rejets)")
            return 1
        gpkg = os.path.join(d, "petit.gpkg")
        points = QgsVectorLayer(gpkg + "|layername=points", "points", "ogr")
        rejets = QgsVectorLayer(gpkg + "|layername=rejets", "rejets", "ogr")
        if not points.isValid() or not rejets.isValid() or rejets.featureCount() != len(REJETEES):
            print("ÉCHEC: les couches du GeoPackage ne se chargent pas")
            return 1
        palette = couleurs_du_rapport(rapport_js)
        themes = sorted({l[2] for l in lignes.values()})  # every line is placed
        attendues = {t: palette[k % len(palette)].name() for k, t in enumerate(themes)}
        verifier_styles(points, rejets, attendues, echecs.append)
        etendue = QgsRectangle(2599970, 1199970, 2600130, 1200110)
        rendu, pixel = rendre([rejets, points], etendue, image)
        verifier_carte(rendu, pixel, lignes, attendues, echecs.append)
        del points, rejets, rendu
    app.exitQgis()
    for e in echecs:
        print("ÉCHEC:", e)
    if not echecs:
        print(f"GeoPackage stylé dans QGIS : {len(lignes) - len(REJETEES)} points, {len(REJETEES)} rejets")
    return 1 if echecs else 0


if __name__ == "__main__":
    code = main()
    # QGIS's objects torn down by Python's own exit crash now and then.
    sys.stdout.flush()
    os._exit(code)
