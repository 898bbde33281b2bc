// The comparison report's picture: both files' points at equal scale, an
// arrow from each moved point's old place to its new one lengthened by the
// factor D.f, new and gone points in their colours; pan, zoom, tooltip; rows
// and points select each other. Reads its data from #donnees.
(function () {
  'use strict';
  window.addEventListener('error', function (e) { document.body.setAttribute('data-erreur', String(e.message)); });
  var D = JSON.parse(document.getElementById('donnees').textContent);
  var toile = document.getElementById('dessin'), ctx = toile.getContext('2d');
  var bulle = document.getElementById('bulle');
  var P = D.p, n = P.length / 5, W = 0, H = 0, vue = { s: 1, ox: 0, oy: 0 }, choisi = -1;
  var COUL = ['#b0b0b0', '#2ca02c', '#d62728', '#ff7f0e', '#1f77b4', '#9467bd'];
  var NOMS = ['identique', 'nouveau', 'supprimé', 'déplacé (flèche ×' + D.f + ')', 'modifié', 'en double'];

  function legende() {
    var l = document.getElementById('legende');
    NOMS.forEach(function (t, k) {
      var e = document.createElement('span');
      e.className = 'leg' + (k === 3 ? ' fleche' : '');
      e.style.setProperty('--c', COUL[k]);
      e.textContent = t;
      l.appendChild(e);
    });
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
  function echelle() {
    var l = pas(100), px = l * vue.s, m = l / 1000;
    ctx.fillStyle = '#000'; ctx.fillRect(W - 30 - px, H - 22, px, 4);
    ctx.font = '12px sans-serif';
    ctx.fillText(m >= 1000 ? m / 1000 + ' km' : m + ' m', W - 30 - px, H - 28);
    ctx.beginPath(); ctx.moveTo(W - 30, 14); ctx.lineTo(W - 36, 34); ctx.lineTo(W - 24, 34); ctx.closePath(); ctx.fill();
    ctx.fillText('N', W - 34, 48);
  }
  function fleche(i) {
    var y = P[5 * i], x = P[5 * i + 1];
    var X0 = ex(y), Y0 = ey(x), X1 = ex(y + D.f * (P[5 * i + 3] - y)), Y1 = ey(x + D.f * (P[5 * i + 4] - x));
    var a = Math.atan2(Y1 - Y0, X1 - X0);
    ctx.beginPath(); ctx.moveTo(X0, Y0); ctx.lineTo(X1, Y1);
    ctx.moveTo(X1, Y1); ctx.lineTo(X1 - 8 * Math.cos(a - 0.4), Y1 - 8 * Math.sin(a - 0.4));
    ctx.moveTo(X1, Y1); ctx.lineTo(X1 - 8 * Math.cos(a + 0.4), Y1 - 8 * Math.sin(a + 0.4));
    ctx.stroke();
  }
  function dessiner() {
    ctx.clearRect(0, 0, W, H);
    var i, k;
    for (k = 0; k < 6; k++) {  // the unchanged below, the differences above
      ctx.fillStyle = ctx.strokeStyle = COUL[k]; ctx.lineWidth = 1.5;
      for (i = 0; i < n; i++) {
        if (P[5 * i + 2] !== k) continue;
        ctx.fillRect(Math.round(ex(P[5 * i])) - 2, Math.round(ey(P[5 * i + 1])) - 2, 4, 4);
        if (k === 3) fleche(i);
      }
    }
    if (choisi >= 0) {
      ctx.strokeStyle = '#000'; ctx.lineWidth = 2.5; ctx.beginPath();
      ctx.arc(Math.round(ex(P[5 * choisi])), Math.round(ey(P[5 * choisi + 1])), 12, 0, 2 * Math.PI); ctx.stroke();
    }
    echelle();
    toile.setAttribute('data-dessine', String(n));
  }
  var attente = false;
  function redessiner() { if (!attente) { attente = true; requestAnimationFrame(function () { attente = false; dessiner(); }); } }
  function pointSous(mx, my) {
    var best = -1, bd = 49;
    for (var i = 0; i < n; i++) {
      var dx = ex(P[5 * i]) - mx, dy = ey(P[5 * i + 1]) - my, d = dx * dx + dy * dy;
      if (d < bd || (d === bd && P[5 * i + 2] > 0)) { bd = d; best = i; }
    }
    return best;
  }
  function choisirRangee(i) {
    document.querySelectorAll('tr.sel').forEach(function (r) { r.classList.remove('sel'); });
    var r = document.querySelector('tr[data-p="' + i + '"]');
    if (r) { r.classList.add('sel'); r.scrollIntoView({ block: 'nearest' }); }
  }

  var glisse = null;
  toile.addEventListener('mousedown', function (e) { glisse = { x: e.offsetX, y: e.offsetY, bouge: false }; });
  window.addEventListener('mouseup', function (e) {
    if (glisse && !glisse.bouge && e.target === toile) {
      var i = pointSous(e.offsetX, e.offsetY);
      if (i >= 0) { choisi = i; choisirRangee(i); redessiner(); }
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
    bulle.textContent = D.id[i] + ' — ' + NOMS[P[5 * i + 2]];
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
    var r = e.target.closest && e.target.closest('tr[data-p]');
    if (!r) return;
    var i = Number(r.getAttribute('data-p'));
    choisirRangee(i);
    choisi = i; vue.ox = W / 2 - P[5 * i] * vue.s; vue.oy = H / 2 + P[5 * i + 1] * vue.s;
    toile.scrollIntoView({ block: 'nearest' }); redessiner();
  });
  window.addEventListener('resize', function () { ajuster(); redessiner(); });
  legende(); ajuster(); dessiner();
})();
