#!/usr/bin/env python3
"""Headless Chromium loads quillon-lot's check reports, a batch's index and
a comparison report: the pages' counts and rows match the log or the text
output, the points show in their colour where they lie, the files' texts
run nothing, nothing is fetched; printed to PDF (read back with poppler's
pdftotext and pdfinfo), each holds its verdict, counts and rows, headings
on every page, no row cut. Prints how long an index of 2,000 files takes."""
import os, re, resource, shutil, struct, subprocess, sys, tempfile, time, zlib

lot, donnees = os.path.abspath(sys.argv[1]), os.path.dirname(os.path.abspath(__file__))
chromium = shutil.which('chromium')
if chromium is None or shutil.which('pdftotext') is None:
    print('chromium or pdftotext absent (scripts/install-deps.sh installs them): test skipped'); sys.exit(77)
travail = tempfile.mkdtemp()
echecs = []

def verifier(condition, texte):
    if not condition: echecs.append(texte)

def navigateur(page, *options):
    profil = tempfile.mkdtemp(dir=travail)
    r = subprocess.run([chromium, '--headless', '--no-sandbox', '--disable-gpu', '--hide-scrollbars', '--no-first-run',
                        '--user-data-dir=' + profil, '--window-size=1200,1000', '--virtual-time-budget=5000', *options,
                        'file://' + page], capture_output=True, timeout=120)
    return r.stdout.decode('utf-8', 'replace')

def pixels(png, rgb=b'\xff\x00\x00'):  # (x, y) of every pixel of that colour of an 8-bit RGB(A) PNG
    data, pos, idat = open(png, 'rb').read(), 8, b''
    while pos < len(data):
        n, sorte = struct.unpack('>I4s', data[pos:pos + 8])
        if sorte == b'IHDR': w, h, _, couleur = struct.unpack('>IIBB', data[pos + 8:pos + 18])
        if sorte == b'IDAT': idat += data[pos + 8:pos + 8 + n]
        pos += n + 12
    b, brut, prec, vus = (4 if couleur == 6 else 3), zlib.decompress(idat), None, []
    for y in range(h):
        f, l = brut[y * (w * b + 1)], bytearray(brut[y * (w * b + 1) + 1:(y + 1) * (w * b + 1)])
        prec = prec or bytearray(len(l))
        for i in range(len(l)):
            a, c, d = (l[i - b] if i >= b else 0), prec[i], (prec[i - b] if i >= b else 0)
            p = a + c - d
            pred = [0, a, c, (a + c) // 2, a if abs(p - a) <= abs(p - c) and abs(p - a) <= abs(p - d) else c if abs(p - c) <= abs(p - d) else d][f]
            l[i] = (l[i] + pred) & 255
        vus += [(x, y) for x in range(w) if l[x * b:x * b + 3] == rgb]
        prec = l
    return vus

def charger(page, nom, dessin=True):
    """The page's DOM once drawn; no script error, no request, no text run."""
    dom = navigateur(page, '--dump-dom', '--log-net-log=' + os.path.join(travail, nom + '.net'))
    verifier('data-erreur="' not in dom and (not dessin or 'data-dessine=' in dom), nom + ': the picture was not drawn')
    verifier('<img' not in dom and 'pwn' not in re.search(r'<title>(.*?)</title>', dom).group(1), nom + ': a text ran')
    net = open(os.path.join(travail, nom + '.net')).read()
    # The browser's own services aside (updates, clock, accounts).
    autres = re.findall(r'"url":"(?!file:)[a-z]+://(?![a-z0-9.]*(?:google\.com|googleapis\.com|gvt1\.com)/)[^"]*', net)
    verifier(not autres, f'{nom}: requests {autres[:3]}')
    return dom

for f in ('avec-rejets.ptv', 'sans-rejet.ptv'): shutil.copy(os.path.join(donnees, f), travail)
subprocess.run([lot, '-e', '500', '-t', 'CS', '--rapport=rapports', 'avec-rejets.ptv', 'sans-rejet.ptv'],
               cwd=travail, capture_output=True)
for nom, rejets in (('avec-rejets', True), ('sans-rejet', False)):
    page = os.path.join(travail, 'rapports', nom + '.ptv.html')
    journal = open(os.path.join(travail, nom + '.ptv.log'), 'rb').read().decode('cp1252').split('\r\n')
    dom = charger(page, nom)
    lignes = {m.group(1) for l in journal for m in [re.match(r'(?:LECTURE|ECRITURE): ligne (\d+):', l)] if m}
    rangees = re.search(r'<table id="rejets">(.*?)</table>', dom, re.S)
    vues = set(re.findall(r'<tr data-l="(\d+)"', rangees.group(1))) if rangees else set()
    verifier(vues == lignes, f'{nom}: rejected rows {sorted(vues)}, log {sorted(lignes)}')
    bilan = re.search(r'<pre id="bilan">(.*?)</pre>', dom, re.S).group(1).strip().split('\n')
    verifier(bilan == [l for l in journal if l][-4:], f'{nom}: summary {bilan}')
    verifier(not rejets or '&lt;img src=x onerror=' in dom, nom + ': the escaped line is not shown')
    navigateur(page, '--screenshot=' + os.path.join(travail, nom + '.png'))
    rouges = pixels(os.path.join(travail, nom + '.png'))
    # The rejected points with coordinates lie east of every other point.
    verifier(bool(rouges) == rejets and all(x > 900 for x, _ in rouges), f'{nom}: red pixels {rouges[:5]}')

# Two deliveries: the old one without rejects; in the new one, line 2 moved
# half a metre east, line 3 gone, a new point, and the hostile line.
ancien = open(os.path.join(donnees, 'sans-rejet.ptv'), 'rb').read().split(b'\r\n')[:-1]
hostile = open(os.path.join(donnees, 'avec-rejets.ptv'), 'rb').read().split(b'\r\n')[9]
nouveau = [ancien[0], ancien[1][:32] + b'2600008.500' + ancien[1][43:]] + ancien[3:] + [
    ancien[0].replace(b'           1 ', b'          99 '), hostile]
open(os.path.join(travail, 'ancien.ptv'), 'wb').write(b''.join(l + b'\r\n' for l in ancien))
open(os.path.join(travail, "nouveau<'&.ptv"), 'wb').write(b''.join(l + b'\r\n' for l in nouveau))
sortie = subprocess.run([lot, '--comparer', '--rapport=comparaison.html', 'ancien.ptv', "nouveau<'&.ptv"], cwd=travail,
                        capture_output=True).stdout.decode('cp1252').split('\n')
totaux = {l.split('\t')[1]: int(l.split('\t')[2]) for l in sortie if l.startswith('total\t')}
verifier(totaux['deplace'] == 1 and totaux['nouveau'] == 1 and totaux['supprime'] == 1 and totaux['rejete'] == 1,
         f'comparison: totals {totaux}')
page = os.path.join(travail, 'comparaison.html')
dom = charger(page, 'comparaison')
for categorie, n in totaux.items():
    table = re.search(r'<table id="' + categorie + r'">(.*?)</table>', dom, re.S)
    rangees = len(re.findall(r'<tr[ >]', table.group(1))) - 1 if table else 0
    verifier(categorie == 'identique' or rangees == n, f'comparison: {rangees} rows of {categorie}, {n} in the output')
dessines = int(re.search(r'data-dessine="(\d+)"', dom).group(1)) if 'data-dessine="' in dom else -1
attendus = sum(totaux[k] for k in ('nouveau', 'supprime', 'deplace', 'modifie', 'doublon', 'identique'))
verifier(dessines == attendus, f'comparison: {dessines} points drawn, {attendus} expected')
verifier('&lt;img src=x onerror=' in dom and "nouveau&lt;'&amp;.ptv" in dom, 'comparison: a text is not shown escaped')
navigateur(page, '--screenshot=' + os.path.join(travail, 'comparaison.png'))
# The moved point and its arrow, in the moved colour.
verifier(len(pixels(os.path.join(travail, 'comparaison.png'), b'\xff\x7f\x0e')) > 20, 'comparison: no moved point drawn')

def imprimer(page, nom):
    """The page printed on A4: the text of each page."""
    pdf = os.path.join(travail, nom + '.pdf')
    navigateur(page, '--print-to-pdf=' + pdf, '--no-pdf-header-footer')
    info = subprocess.run(['pdfinfo', pdf], capture_output=True, text=True).stdout
    pages = int(re.search(r'Pages:\s+(\d+)', info).group(1))
    verifier('(A4)' in re.search(r'Page size:(.*)', info).group(1), f'{nom}: not printed on A4: {info}')
    return [subprocess.run(['pdftotext', '-f', str(k), '-l', str(k), pdf, '-'], capture_output=True).stdout
            .decode('utf-8', 'replace') for k in range(1, pages + 1)]

def mots(texte): return set(re.findall(r'\w+', texte))

# The check report with rejects, printed: the verdict and the summary's four
# counts on the first page, every rejected line's number, no button.
textes = imprimer(os.path.join(travail, 'rapports', 'avec-rejets.ptv.html'), 'avec-rejets')
journal = open(os.path.join(travail, 'avec-rejets.ptv.log'), 'rb').read().decode('cp1252').split('\r\n')
comptes = [l.split()[0] for l in journal if re.match(r'\d+ (ligne|erreur)', l)]
verifier('ligne(s) rejetée(s)' in textes[0] and all(c in mots(textes[0]) for c in comptes),
         f'printed report: verdict or counts {comptes} not on page 1')
rejetees = {m.group(1) for l in journal for m in [re.match(r'LECTURE: ligne (\d+):', l)] if m}
verifier(rejetees <= mots(''.join(textes)), 'printed report: a rejected line is missing')
verifier("Vue d'ensemble" not in ''.join(textes), 'printed report: the button is printed')

# The same report in German: the page's and its script's words, drawn and
# printed; the target and the log the same bytes as in French.
os.mkdir(os.path.join(travail, 'de'))
shutil.copy(os.path.join(donnees, 'avec-rejets.ptv'), os.path.join(travail, 'de'))
subprocess.run([lot, '--langue=de', '-e', '500', '-t', 'CS', '--rapport=.', 'avec-rejets.ptv'],
               cwd=os.path.join(travail, 'de'), capture_output=True)
for f in ('avec-rejets.ptp', 'avec-rejets.ptv.log'):
    a, b = (open(os.path.join(d, f), 'rb').read().split(b'\r\n') for d in (travail, os.path.join(travail, 'de')))
    verifier(a[:1] + a[2:] == b[:1] + b[2:], f'German run: {f} differs from the French run\'s')
allemand = os.path.join(travail, 'de', 'avec-rejets.ptv.html')
dom = charger(allemand, 'allemand')
legende = re.search(r'<span id="legende">(.*?)</span></div>', dom, re.S).group(1)
verifier('<html lang="de"' in dom and 'Thema 6' in legende and 'abgewiesen' in legende and 'thème' not in legende,
         f'German report: legend {legende[:200]}')
textes = imprimer(allemand, 'allemand')
francais = [m for m in ('Lignes rejetées', 'Ligne source', 'Dessin des points', 'lues dans le fichier', 'Rapport de')
            if m in ''.join(textes)]
verifier('abgewiesene Zeile(n)' in textes[0] and 'aus der Quelldatei gelesen' in textes[0] and not francais,
         f'German report printed: French words {francais}')

# Many rejected lines, each of its own point 1000 + k: the table's heading
# on each of its pages, each row whole on one page, pages as the rows need.
k0 = open(os.path.join(donnees, 'sans-rejet.ptv'), 'rb').read().split(b'\r\n')[0]
lignes = [k0[:10] + b'%12d 9' % (1000 + k) + k0[24:32] + b'%11.3f' % (2600000 + k) + k0[43:] for k in range(1, 161)]
open(os.path.join(travail, 'beaucoup.ptv'), 'wb').write(b''.join(l + b'\r\n' for l in lignes))
subprocess.run([lot, '-e', '500', '-t', 'CS', '--rapport=rapports', 'beaucoup.ptv'], cwd=travail, capture_output=True)
textes = imprimer(os.path.join(travail, 'rapports', 'beaucoup.ptv.html'), 'beaucoup')
avec = [k for k, t in enumerate(textes) if '1001' in mots(t) or any(str(1000 + n) in mots(t) for n in range(2, 161))]
coupees = [n for n in range(1, 161) if not any({str(n), str(1000 + n)} <= mots(t) for t in textes)]
verifier(not coupees, f'printed rows cut or missing: {coupees[:5]}')
sans_entete = [k for k in avec if 'Ligne source' not in textes[k]]
verifier(not sans_entete, f'pages {sans_entete} of the rejected lines without the headings')
verifier(len(avec) >= 2 and len(textes) <= max(avec) + 3 and 160 / len(avec) >= 15,
         f'{len(textes)} pages printed, rows on {len(avec)}')
# On screen, those rows sit in blocks, whose columns the script aligns.
dom = charger(os.path.join(travail, 'rapports', 'beaucoup.ptv.html'), 'beaucoup')
verifier(dom.count('<div class="bloc" data-de="rejets">') == 2 and '@media screen{#rejets,' in dom,
         'the rejected lines are not in two aligned blocks')

# Two places of 50 points each: 1,225 close pairs a place, above the
# thousand that the report lists one by one; one row a place.
lignes = [k0[:10] + b'%12d' % (2000 + k) + k0[22:32] + b'%11.3f' % (2600000 + 10 * (k > 50)) + k0[43:]
          for k in range(1, 101)]
open(os.path.join(travail, 'serres.ptv'), 'wb').write(b''.join(l + b'\r\n' for l in lignes))
subprocess.run([lot, '-e', '500', '-t', 'CS', '--rapport=rapports', 'serres.ptv'], cwd=travail, capture_output=True)
dom = charger(os.path.join(travail, 'rapports', 'serres.ptv.html'), 'serres')
proches = re.search(r'<table id="proches">.*?<tbody>(.*?)</tbody>', dom, re.S)
rangees = re.findall(r'<tr data-l="(\d+)">.*?<td class="n">(\d+)</td><td class="n">[\d.]+</td><td>([\d, ]+)</td>',
                     proches.group(1)) if proches else []
verifier(rangees == [('1', '1225', '1, 2, 3, 4, 5, 6, 7, 8, 9, 10'), ('51', '1225', '51, 52, 53, 54, 55, 56, 57, 58, 59, 60')],
         f'close pairs by place: {rangees}')

# A batch of 2,000 files, one in ten with rejects: the index shows them at
# once, problems first, names in natural order; its totals; printed, no
# filter box and every file.
os.mkdir(os.path.join(travail, 'lot'))
for n in range(1, 2001):
    shutil.copy(os.path.join(donnees, 'avec-rejets.ptv' if n % 10 == 0 else 'sans-rejet.ptv'),
                os.path.join(travail, 'lot', f'f{n}.ptv'))
subprocess.run([lot, '-e', '500', '-t', 'CS', '--rapport=index', *[f'lot/f{n}.ptv' for n in range(1, 2001)]],
               cwd=travail, capture_output=True)
index = os.path.join(travail, 'index', 'index.html')
vide = os.path.join(travail, 'vide.html')
open(vide, 'w').write('<!DOCTYPE html><title>vide</title>')
def duree(page):
    """Wall and processor time (the browser's processes together) to load the page."""
    avant, debut = resource.getrusage(resource.RUSAGE_CHILDREN), time.monotonic()
    subprocess.run([chromium, '--headless', '--no-sandbox', '--disable-gpu', '--user-data-dir=' + tempfile.mkdtemp(dir=travail),
                    '--window-size=1200,1000', '--dump-dom', 'file://' + page], capture_output=True, timeout=120)
    apres = resource.getrusage(resource.RUSAGE_CHILDREN)
    return time.monotonic() - debut, apres.ru_utime + apres.ru_stime - avant.ru_utime - avant.ru_stime
mesures = [(duree(index), duree(vide)) for _ in range(2)]
mur, cpu = min(p[0] - v[0] for p, v in mesures), min(p[1] - v[1] for p, v in mesures)
print(f'index of 2000 files: {os.path.getsize(index)} bytes, shown in {mur:.2f} s ({cpu:.2f} s of processor time) '
      f'beyond an empty page, load average {os.getloadavg()[0]:.1f}')
verifier(cpu < 3, f'index shown after {cpu:.2f} s of processor time')
dom = charger(index, 'index', dessin=False)
verifier('data-pret="1"' in dom, 'index: its script did not run')
noms = re.findall(r'<td class="nom"><a href="[^"]*">lot/(f\d+)\.ptv<', dom)
attendus = [f'f{n}' for n in range(10, 2001, 10)] + [f'f{n}' for n in range(1, 2001) if n % 10]
verifier(noms == attendus, f'index: files in the order {noms[:12]}')
verifier('200 fichier(s) avec rejets' in dom, 'index: verdict')
totaux = re.search(r'<table id="totaux">.*?</tr><tr>(.*?)</tr>', dom, re.S)
valeurs = re.findall(r'>(\d*)</td>', totaux.group(1)) if totaux else []
verifier(valeurs[:9] == ['2000', '1800', '200', '0', '0', str(200 * 11 + 1800 * 15), '0', str(200 * 13), '0'],
         f'index: totals {valeurs}')
textes = imprimer(index, 'index')
verifier('Filtrer' not in ''.join(textes) and '200 fichier(s) avec rejets' in textes[0], 'index: printed page 1')
verifier({f'f{n}' for n in range(1, 2001)} <= mots(''.join(textes)), 'index: a file missing from the print')

textes = imprimer(page, 'comparaison')
verifier('Les fichiers diffèrent' in textes[0] and 'Déplacés' in textes[0], 'comparison: printed page 1')

print('\n'.join(echecs) or 'ok')
shutil.rmtree(travail)
sys.exit(1 if echecs else 0)
