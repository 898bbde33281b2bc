// The reports' map, which each page's own script follows in the same
// <script>: points at equal scale in Y and X on the canvas #dessin, given in
// millimetres east and north of D.o (whole metres) over D.e (width and
// height); a grid with its coordinates, a scale bar and a north arrow; drag
// to pan, the wheel to zoom, #tout to see everything again; the tooltip
// #bulle over the point under the cursor; a point clicked selects its table
// row, a row clicked its point.

function donneesPage() { return JSON.parse(document.getElementById('donnees').textContent); }

// The largest of 1, 2 or 5 times a power of ten that is at most v (1 for
// v not above 0), a step below 1 as the double nearest to its decimal: the
// program's own rule for grid steps.
function pasRond(v) {
  if (!(v > 0) || !isFinite(v)) return 1;
  var e = Math.floor(Math.log10(v));
  function mantisse() { return e >= 0 ? v / Math.pow(10, e) : v * Math.pow(10, -e); }
  var r = mantisse();
  if (r >= 10) { e++; r = mantisse(); }
  if (r < 1) { e--; r = mantisse(); }
  var chiffre = r >= 5 ? 5 : r >= 2 ? 2 : 1;
  return e >= 0 ? chiffre * Math.pow(10, e) : chiffre / Math.pow(10, -e);
}

// D.p holds `pas` numbers a point, its Y and X first. What the page says:
//   dessiner(ctx, carte)  draws its points over the grid
//   bulle(i)              the tooltip's text over point i
//   selecteur             the table rows that select a point
//   rangee(i)             the row of point i, or null
//   point(r)              the point of row r, or -1
//   devant(i)             (if given) point i wins a tie under the cursor
function Carte(D, pas, page) {
  var toile = document.getElementById('dessin'), ctx = toile.getContext('2d');
  var bulle = document.getElementById('bulle');
  var P = D.p, n = P.length / pas, W = 0, H = 0, vue = { s: 1, ox: 0, oy: 0 }, choisi = -1, attente = false;

  function ex(y) { return vue.ox + y * vue.s; }
  function ey(x) { return vue.oy - x * vue.s; }
  function X(i) { return Math.round(ex(P[pas * i])); }
  function Y(i) { return Math.round(ey(P[pas * i + 1])); }
  function ajuster() {
    W = toile.width = toile.clientWidth; H = toile.height = toile.clientHeight;
    var m = 30, w = D.e[0], h = D.e[1];
    var s = Math.min(w > 0 ? (W - 2 * m) / w : Infinity, h > 0 ? (H - 2 * m) / h : Infinity);
    vue.s = isFinite(s) ? s : 0.01;
    vue.ox = W / 2 - vue.s * w / 2; vue.oy = H / 2 + vue.s * h / 2;
  }
  function texteM(mm) {
    var m = mm / 1000;
    // The numbers as the user's language writes them in Switzerland.
    var l = T('fr-CH');
    return Math.abs(m) >= 1000 ? (m / 1000).toLocaleString(l) + ' km' : m.toLocaleString(l) + ' m';
  }
  // A grid line's coordinate in metres: whole from a step of a metre up,
  // else with the decimals of the step.
  function coord(mm, pasMm) {
    return (mm / 1000).toFixed(Math.max(0, Math.min(3, -Math.floor(Math.log10(pasMm / 1000) + 1e-9))));
  }

  // Lines at whole multiples of the step in the frame's own coordinates
  // (D.o is in whole metres, a step of a millimetre at least), each
  // labelled with its coordinate; the axes named Y (east) and X (north).
  function grille() {
    var g = Math.max(1, pasRond(110 / vue.s)), oy = D.o[0] * 1000, ox = D.o[1] * 1000;
    var y0 = Math.ceil((oy - vue.ox / vue.s) / g) * g, y1 = oy + (W - vue.ox) / vue.s;
    var x0 = Math.ceil((ox + (vue.oy - H) / vue.s) / g) * g, x1 = ox + vue.oy / vue.s, y, x, X, Y;
    ctx.strokeStyle = '#e4e4e4'; ctx.fillStyle = '#666'; ctx.lineWidth = 1; ctx.font = '11px sans-serif';
    ctx.beginPath();
    for (y = y0; y <= y1; y += g) { X = Math.round(ex(y - oy)) + 0.5; ctx.moveTo(X, 0); ctx.lineTo(X, H); }
    for (x = x0; x <= x1; x += g) { Y = Math.round(ey(x - ox)) + 0.5; ctx.moveTo(0, Y); ctx.lineTo(W, Y); }
    ctx.stroke();
    for (y = y0; y <= y1; y += g) if (ex(y - oy) < W - 90) ctx.fillText(coord(y, g), ex(y - oy) + 2, H - 4);
    for (x = x0; x <= x1; x += g) if (ey(x - ox) > 30) ctx.fillText(coord(x, g), 2, ey(x - ox) - 2);
    ctx.fillStyle = '#000'; ctx.font = 'bold 12px sans-serif';
    ctx.fillText('Y \u2192', W - 30, H - 4); ctx.fillText('X \u2191', 2, 14);
  }
  function echelleNord() {
    var l = pasRond(100 / vue.s), px = l * vue.s;
    ctx.fillStyle = '#000'; ctx.fillRect(W - 30 - px, H - 22, px, 4);
    ctx.font = '12px sans-serif'; ctx.fillText(texteM(l), W - 30 - px, H - 28);
    ctx.beginPath(); ctx.moveTo(W - 30, 14); ctx.lineTo(W - 36, 34); ctx.lineTo(W - 24, 34); ctx.closePath();
    ctx.fill();
    ctx.fillText('N', W - 34, 48);
  }
  function anneau(X, Y, r, c) { ctx.strokeStyle = c; ctx.beginPath(); ctx.arc(X, Y, r, 0, 2 * Math.PI); ctx.stroke(); }

  var carte = { ctx: ctx, vue: vue, ex: ex, ey: ey, X: X, Y: Y, anneau: anneau, redessiner: redessiner };
  function dessiner() {
    ctx.clearRect(0, 0, W, H);
    grille();
    page.dessiner(ctx, carte);
    if (choisi >= 0) { ctx.lineWidth = 2.5; anneau(X(choisi), Y(choisi), 17, '#000'); }
    echelleNord();
    toile.setAttribute('data-dessine', String(n));
  }
  function redessiner() {
    if (!attente) { attente = true; requestAnimationFrame(function () { attente = false; dessiner(); }); }
  }

  function pointSous(mx, my) {
    var best = -1, bd = 49;
    for (var i = 0; i < n; i++) {
      var dx = ex(P[pas * i]) - mx, dy = ey(P[pas * i + 1]) - my, d = dx * dx + dy * dy;
      if (d < bd || (d === bd && page.devant && page.devant(i))) { bd = d; best = i; }
    }
    return best;
  }
  function marquer(r) {
    document.querySelectorAll('tr.sel').forEach(function (s) { s.classList.remove('sel'); });
    if (r) { r.classList.add('sel'); r.scrollIntoView({ block: 'nearest' }); }
  }
  function evenements() {
    var glisse = null;
    toile.addEventListener('mousedown', function (e) { glisse = { x: e.offsetX, y: e.offsetY, bouge: false }; });
    window.addEventListener('mouseup', function (e) {
      if (glisse && !glisse.bouge && e.target === toile) {
        var i = pointSous(e.offsetX, e.offsetY);
        if (i >= 0) { choisi = i; marquer(page.rangee(i)); redessiner(); }
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
      bulle.textContent = page.bulle(i);
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
      var r = e.target.closest && e.target.closest(page.selecteur);
      if (!r) return;
      marquer(r);
      var i = page.point(r);
      if (i < 0) return;
      choisi = i; vue.ox = W / 2 - P[pas * i] * vue.s; vue.oy = H / 2 + P[pas * i + 1] * vue.s;
      toile.scrollIntoView({ block: 'nearest' }); redessiner();
    });
    window.addEventListener('resize', function () { ajuster(); redessiner(); });
  }

  evenements(); ajuster(); dessiner();
  return carte;
}

// An entry of the legend #legende: a square, a ring or a cross of colour c.
function entreeLegende(c, texte, forme) {
  var e = document.createElement('span');
  e.className = 'leg ' + forme;
  e.style.setProperty('--c', c);
  e.textContent = texte;
  document.getElementById('legende').appendChild(e);
}
