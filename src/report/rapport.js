// The check report's picture: the points at equal scale on a canvas, with a
// grid, coordinate labels, a scale bar and a north arrow; pan, zoom, tooltip;
// rows and points select each other. Reads its data from #donnees.
(function () {
  'use strict';
  var page = document.body;
  window.addEventListener('error', function (e) { page.setAttribute('data-erreur', String(e.message)); });
  var D = JSON.parse(document.getElementById('donnees').textContent);
  var toile = document.getElementById('dessin'), ctx = toile.getContext('2d');
  var bulle = document.getElementById('bulle');
  var P = D.p, n = P.length / 5, W = 0, H = 0;
  var COUL = ['#1f77b4', '#2ca02c', '#9467bd', '#8c564b', '#17becf', '#bcbd22', '#e377c2', '#005f5f', '#6b8e23', '#4b0082'];
  var REJET = '#ff0000', DOUBLON = '#ff8c00', PROCHE = '#c000c0', LOIN = '#0050ff', IGNORE = '#999999';
  var vue = { s: 1, ox: 0, oy: 0 }, choisi = -1;
  var parLigne = {};
  for (var i = 0; i < n; i++) parLigne[P[5 * i + 2]] = i;

  function legende() {
    var l = document.getElementById('legende'), h = '';
    function ent(c, t, forme) {
      var e = document.createElement('span');
      e.className = 'leg ' + forme;
      e.style.setProperty('--c', c);
      e.textContent = t;
      l.appendChild(e);
    }
    D.t.forEach(function (t, k) { ent(COUL[k % COUL.length], 'thème ' + t, 'pt'); });
    // The legend's red is a shade off, so that the picture alone holds REJET.
    ent(IGNORE, 'ignoré', 'pt'); ent('#fe0000', 'rejeté', 'croix');
    ent(DOUBLON, 'en double', 'anneau'); ent(PROCHE, 'proche', 'anneau'); ent(LOIN, 'éloigné', 'anneau');
    return h;
  }

  function ajuster() {
    W = toile.width = toile.clientWidth; H = toile.height = toile.clientHeight;
    var m = 30, w = D.e[0], h = D.e[1];
    var s = Math.min(w > 0 ? (W - 2 * m) / w : Infinity, h > 0 ? (H - 2 * m) / h : Infinity);
    vue.s = isFinite(s) ? s : 0.01;
    vue.ox = W / 2 - vue.s * w / 2; vue.oy = H / 2 + vue.s * h / 2;
  }
  function ex(y) { return vue.ox + y * vue.s; }
  function ey(x) { return vue.oy - x * vue.s; }
  function pas(px) {  // a round length in mm about px pixels long
    var mm = px / vue.s, p = Math.pow(10, Math.floor(Math.log10(mm))), r = mm / p;
    return (r < 2 ? 1 : r < 5 ? 2 : 5) * p;
  }
  function texteM(mm) {
    var m = mm / 1000;
    return Math.abs(m) >= 1000 ? (m / 1000).toLocaleString('fr-CH') + ' km' : m.toLocaleString('fr-CH') + ' m';
  }
  function coord(mm, o, pasMm) {
    var dec = Math.max(0, Math.min(3, -Math.floor(Math.log10(pasMm / 1000))));
    return (o + mm / 1000).toFixed(dec);
  }

  function grille() {
    var g = pas(110), y0 = (-vue.ox) / vue.s, y1 = (W - vue.ox) / vue.s, x0 = (vue.oy - H) / vue.s, x1 = vue.oy / vue.s;
    ctx.strokeStyle = '#e4e4e4'; ctx.fillStyle = '#666'; ctx.lineWidth = 1; ctx.font = '11px sans-serif';
    ctx.beginPath();
    for (var y = Math.ceil(y0 / g) * g; y <= y1; y += g) { var X = Math.round(ex(y)) + 0.5; ctx.moveTo(X, 0); ctx.lineTo(X, H); }
    for (var x = Math.ceil(x0 / g) * g; x <= x1; x += g) { var Y = Math.round(ey(x)) + 0.5; ctx.moveTo(0, Y); ctx.lineTo(W, Y); }
    ctx.stroke();
    for (y = Math.ceil(y0 / g) * g; y <= y1; y += g) ctx.fillText(coord(y, D.o[0], g), ex(y) + 2, H - 4);
    for (x = Math.ceil(x0 / g) * g; x <= x1; x += g) ctx.fillText(coord(x, D.o[1], g), 2, ey(x) - 2);
  }

  function echelleNord() {
    var l = pas(100), px = l * vue.s;
    ctx.fillStyle = '#000'; ctx.fillRect(W - 30 - px, H - 22, px, 4);
    ctx.font = '12px sans-serif'; ctx.fillText(texteM(l), W - 30 - px, H - 28);
    ctx.beginPath(); ctx.moveTo(W - 30, 14); ctx.lineTo(W - 36, 34); ctx.lineTo(W - 24, 34); ctx.closePath(); ctx.fill();
    ctx.fillText('N', W - 34, 48);
  }

  function densite() {
    if (!D.d) return;
    var nx = D.d.n[0], ny = D.d.n[1], c = D.d.c, max = 1;
    for (var k = 1; k < c.length; k += 2) max = Math.max(max, c[k]);
    var cw = D.e[0] / nx * vue.s, ch = D.e[1] / ny * vue.s;
    for (k = 0; k < c.length; k += 2) {
      var i = c[k] % nx, j = Math.floor(c[k] / nx), a = 0.25 + 0.75 * Math.log(1 + c[k + 1]) / Math.log(1 + max);
      ctx.fillStyle = 'rgba(31,119,180,' + a.toFixed(3) + ')';
      ctx.fillRect(ex(i * D.e[0] / nx), ey((j + 1) * D.e[1] / ny), Math.max(1, cw), Math.max(1, ch));
    }
  }

  function anneau(X, Y, r, c) { ctx.strokeStyle = c; ctx.beginPath(); ctx.arc(X, Y, r, 0, 2 * Math.PI); ctx.stroke(); }
  function croix(X, Y) {
    ctx.fillStyle = REJET;
    for (var k = -4; k <= 4; k++) { ctx.fillRect(X + k - 1, Y + k - 1, 2, 2); ctx.fillRect(X + k - 1, Y - k - 1, 2, 2); }
  }

  function dessiner() {
    ctx.clearRect(0, 0, W, H);
    grille(); densite();
    var i, X, Y, f;
    for (i = 0; i < n; i++) {  // converted and skipped points below the marks
      f = P[5 * i + 4];
      if (f & 1) continue;
      ctx.fillStyle = f & 16 ? IGNORE : COUL[P[5 * i + 3] % COUL.length];
      ctx.fillRect(Math.round(ex(P[5 * i])) - 1, Math.round(ey(P[5 * i + 1])) - 1, 3, 3);
    }
    ctx.lineWidth = 1.5;
    for (i = 0; i < n; i++) {
      f = P[5 * i + 4]; X = Math.round(ex(P[5 * i])); Y = Math.round(ey(P[5 * i + 1]));
      if (f & 2) anneau(X, Y, 7, DOUBLON);
      if (f & 4) anneau(X, Y, 10, PROCHE);
      if (f & 8) anneau(X, Y, 13, LOIN);
    }
    for (i = 0; i < n; i++) if (P[5 * i + 4] & 1) croix(Math.round(ex(P[5 * i])), Math.round(ey(P[5 * i + 1])));
    if (choisi >= 0) { ctx.lineWidth = 2.5; anneau(Math.round(ex(P[5 * choisi])), Math.round(ey(P[5 * choisi + 1])), 17, '#000'); }
    echelleNord();
    toile.setAttribute('data-dessine', String(n));
  }
  var attente = false;
  function redessiner() { if (!attente) { attente = true; requestAnimationFrame(function () { attente = false; dessiner(); }); } }

  function pointSous(mx, my) {
    var best = -1, bd = 49;
    for (var i = 0; i < n; i++) {
      var dx = ex(P[5 * i]) - mx, dy = ey(P[5 * i + 1]) - my, d = dx * dx + dy * dy;
      if (d < bd) { bd = d; best = i; }
    }
    return best;
  }
  function rangee(ligne) { return document.querySelector('tr[data-l="' + ligne + '"]'); }
  function choisirRangee(ligne) {
    document.querySelectorAll('tr.sel').forEach(function (r) { r.classList.remove('sel'); });
    var r = rangee(ligne);
    if (r) { r.classList.add('sel'); r.scrollIntoView({ block: 'nearest' }); }
  }

  var glisse = null;
  toile.addEventListener('mousedown', function (e) { glisse = { x: e.offsetX, y: e.offsetY, bouge: false }; });
  window.addEventListener('mouseup', function (e) {
    if (glisse && !glisse.bouge && e.target === toile) {
      var i = pointSous(e.offsetX, e.offsetY);
      if (i >= 0) { choisi = i; choisirRangee(P[5 * i + 2]); redessiner(); }
    }
    glisse = null;
  });
  toile.addEventListener('mousemove', function (e) {
    if (glisse) {
      var dx = e.offsetX - glisse.x, dy = e.offsetY - glisse.y;
      if (Math.abs(dx) + Math.abs(dy) > 2) glisse.bouge = true;
      vue.ox += dx; vue.oy += dy; glisse.x = e.offsetX; glisse.y = e.offsetY;
      bulle.hidden = true; redessiner(); return;
    }
    var i = pointSous(e.offsetX, e.offsetY);
    if (i < 0) { bulle.hidden = true; return; }
    var l = P[5 * i + 2], r = document.querySelector('#rejets tr[data-l="' + l + '"]');
    bulle.textContent = 'ligne ' + l + ' — ' + D.id[i] + (r ? '\n' + r.cells[3].textContent : '');
    bulle.style.left = (e.offsetX + 14) + 'px'; bulle.style.top = (e.offsetY + 14) + 'px'; bulle.hidden = false;
  });
  toile.addEventListener('mouseleave', function () { bulle.hidden = true; });
  toile.addEventListener('wheel', function (e) {
    e.preventDefault();
    var k = Math.exp(-e.deltaY * 0.0015);
    vue.ox = e.offsetX - (e.offsetX - vue.ox) * k; vue.oy = e.offsetY - (e.offsetY - vue.oy) * k; vue.s *= k;
    redessiner();
  }, { passive: false });
  document.getElementById('tout').addEventListener('click', function () { ajuster(); redessiner(); });
  document.addEventListener('click', function (e) {
    var r = e.target.closest && e.target.closest('tr[data-l]');
    if (!r) return;
    var i = parLigne[r.getAttribute('data-l')];
    choisirRangee(r.getAttribute('data-l'));
    if (i === undefined) return;
    choisi = i; vue.ox = W / 2 - P[5 * i] * vue.s; vue.oy = H / 2 + P[5 * i + 1] * vue.s;
    toile.scrollIntoView({ block: 'nearest' }); redessiner();
  });
  window.addEventListener('resize', function () { ajuster(); redessiner(); });
  legende(); ajuster(); dessiner();
})();
