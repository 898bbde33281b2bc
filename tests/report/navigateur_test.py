#!/usr/bin/env python3
"""Headless Chromium loads quillon-lot's check reports and a comparison
report: the pages' counts and rows match the log or the text output, the
points show in their colour where they lie, the files' texts run nothing,
nothing is fetched."""
import os, re, shutil, struct, subprocess, sys, tempfile, zlib

lot, donnees = os.path.abspath(sys.argv[1]), os.path.dirname(os.path.abspath(__file__))
chromium = shutil.which('chromium')
if chromium is None:
    print('chromium absent (scripts/install-deps.sh installs it): test skipped'); sys.exit(77)
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

def charger(page, nom):
    """The page's DOM once drawn; no script error, no request, no text run."""
    dom = navigateur(page, '--dump-dom', '--log-net-log=' + os.path.join(travail, nom + '.net'))
    verifier('data-erreur="' not in dom and 'data-dessine=' in dom, nom + ': the picture was not drawn')
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
print('\n'.join(echecs) or 'ok')
shutil.rmtree(travail)
sys.exit(1 if echecs else 0)
