#!/usr/bin/env python3
"""Headless Chromium loads quillon-lot's check reports: the page's counts and
rows match the log, rejected points show in the rejected colour where they
lie and nowhere else, the file's texts run nothing, nothing is fetched."""
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

def pixels_rouges(png):  # (x, y) of every pure red pixel of an 8-bit RGB(A) PNG
    data, pos, idat = open(png, 'rb').read(), 8, b''
    while pos < len(data):
        n, sorte = struct.unpack('>I4s', data[pos:pos + 8])
        if sorte == b'IHDR': w, h, _, couleur = struct.unpack('>IIBB', data[pos + 8:pos + 18])
        if sorte == b'IDAT': idat += data[pos + 8:pos + 8 + n]
        pos += n + 12
    b, brut, prec, rouges = (4 if couleur == 6 else 3), zlib.decompress(idat), None, []
    for y in range(h):
        f, l = brut[y * (w * b + 1)], bytearray(brut[y * (w * b + 1) + 1:(y + 1) * (w * b + 1)])
        prec = prec or bytearray(len(l))
        for i in range(len(l)):
            a, c, d = (l[i - b] if i >= b else 0), prec[i], (prec[i - b] if i >= b else 0)
            p = a + c - d
            pred = [0, a, c, (a + c) // 2, a if abs(p - a) <= abs(p - c) and abs(p - a) <= abs(p - d) else c if abs(p - c) <= abs(p - d) else d][f]
            l[i] = (l[i] + pred) & 255
        rouges += [(x, y) for x in range(w) if l[x * b:x * b + 3] == b'\xff\x00\x00']
        prec = l
    return rouges

for f in ('avec-rejets.ptv', 'sans-rejet.ptv'): shutil.copy(os.path.join(donnees, f), travail)
subprocess.run([lot, '-e', '500', '-t', 'CS', '--rapport=rapports', 'avec-rejets.ptv', 'sans-rejet.ptv'],
               cwd=travail, capture_output=True)
for nom, rejets in (('avec-rejets', True), ('sans-rejet', False)):
    page = os.path.join(travail, 'rapports', nom + '.ptv.html')
    journal = open(os.path.join(travail, nom + '.ptv.log'), 'rb').read().decode('cp1252').split('\r\n')
    dom = navigateur(page, '--dump-dom', '--log-net-log=' + os.path.join(travail, nom + '.net'))
    verifier('data-erreur="' not in dom and 'data-dessine=' in dom, nom + ': the picture was not drawn')
    lignes = {m.group(1) for l in journal for m in [re.match(r'(?:LECTURE|ECRITURE): ligne (\d+):', l)] if m}
    rangees = re.search(r'<table id="rejets">(.*?)</table>', dom, re.S)
    vues = set(re.findall(r'<tr data-l="(\d+)"', rangees.group(1))) if rangees else set()
    verifier(vues == lignes, f'{nom}: rejected rows {sorted(vues)}, log {sorted(lignes)}')
    bilan = re.search(r'<pre id="bilan">(.*?)</pre>', dom, re.S).group(1).strip().split('\n')
    verifier(bilan == [l for l in journal if l][-4:], f'{nom}: summary {bilan}')
    verifier('<img' not in dom and 'pwn' not in re.search(r'<title>(.*?)</title>', dom).group(1), nom + ': a text ran')
    verifier(not rejets or '&lt;img src=x onerror=' in dom, nom + ': the escaped line is not shown')
    net = open(os.path.join(travail, nom + '.net')).read()
    # The browser's own services aside (updates, clock, accounts).
    autres = re.findall(r'"url":"(?!file:)[a-z]+://(?![a-z0-9.]*(?:google\.com|googleapis\.com|gvt1\.com)/)[^"]*', net)
    verifier(not autres, f'{nom}: requests {autres[:3]}')
    navigateur(page, '--screenshot=' + os.path.join(travail, nom + '.png'))
    rouges = pixels_rouges(os.path.join(travail, nom + '.png'))
    # The rejected points with coordinates lie east of every other point.
    verifier(bool(rouges) == rejets and all(x > 900 for x, _ in rouges), f'{nom}: red pixels {rouges[:5]}')
print('\n'.join(echecs) or 'ok')
shutil.rmtree(travail)
sys.exit(1 if echecs else 0)
