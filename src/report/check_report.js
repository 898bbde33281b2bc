// The check report's points on the map: converted points coloured by
// theme, skipped ones grey, rejected lines as red crosses, duplicates, close
// and far points ringed; above the points drawn one by one, their density.
// A point is its Y, X, line number, theme's rank in D.t and flags, named by
// D.drapeaux; its row is the first whose data-l is its line.
(function () {
  var D = donneesPage(), F = D.drapeaux, P = D.p, n = P.length / 5;
  var COUL = ['#1f77b4', '#2ca02c', '#9467bd', '#8c564b', '#17becf', '#bcbd22', '#e377c2', '#005f5f', '#6b8e23', '#4b0082'];
  var REJET = '#ff0000', DOUBLON = '#ff8c00', PROCHE = '#c000c0', LOIN = '#0050ff', IGNORE = '#999999';
  // Points at one place are one mark: lieu[i] is the first point at i's
  // place, where its flags gather; nombre[i] how many share it.
  var parLigne = {}, lieu = new Int32Array(n), nombre = new Int32Array(n), premier = new Map(), drap = new Int32Array(n);
  for (var i = 0; i < n; i++) {
    parLigne[P[5 * i + 2]] = i;
    var cle = P[5 * i] + ',' + P[5 * i + 1], k = premier.get(cle);
    if (k === undefined) { premier.set(cle, i); k = i; }
    lieu[i] = k; nombre[k]++; drap[k] |= P[5 * i + 4];
  }
  D.t.forEach(function (t, k) { entreeLegende(COUL[k % COUL.length], T('thème %s', t), 'pt'); });
  // The legend's red is a shade off, so that the picture alone holds REJET.
  entreeLegende(IGNORE, T('ignoré'), 'pt'); entreeLegende('#fe0000', T('rejeté'), 'croix');
  entreeLegende(DOUBLON, T('en double'), 'anneau'); entreeLegende(PROCHE, T('proche'), 'anneau');
  entreeLegende(LOIN, T('éloigné'), 'anneau');

  function densite(ctx, c) {
    if (!D.d) return;
    var nx = D.d.n[0], ny = D.d.n[1], d = D.d.c, max = 1, k;
    for (k = 1; k < d.length; k += 2) max = Math.max(max, d[k]);
    var cw = D.e[0] / nx * c.vue.s, ch = D.e[1] / ny * c.vue.s;
    for (k = 0; k < d.length; k += 2) {
      var i = d[k] % nx, j = Math.floor(d[k] / nx), a = 0.25 + 0.75 * Math.log(1 + d[k + 1]) / Math.log(1 + max);
      ctx.fillStyle = 'rgba(31,119,180,' + a.toFixed(3) + ')';
      ctx.fillRect(c.ex(i * D.e[0] / nx), c.ey((j + 1) * D.e[1] / ny), Math.max(1, cw), Math.max(1, ch));
    }
  }
  function croix(ctx, X, Y) {
    ctx.fillStyle = REJET;
    for (var k = -4; k <= 4; k++) { ctx.fillRect(X + k - 1, Y + k - 1, 2, 2); ctx.fillRect(X + k - 1, Y - k - 1, 2, 2); }
  }
  // The rings below the points; many in the view, smaller and lighter.
  function anneaux(ctx, c) {
    var i, f, dans = 0, W = ctx.canvas.width, H = ctx.canvas.height, X, Y;
    for (i = 0; i < n; i++) {
      if (lieu[i] !== i || !(drap[i] & (F.doublon | F.proche | F.eloigne))) continue;
      X = c.X(i); Y = c.Y(i);
      if (X >= 0 && X < W && Y >= 0 && Y < H) dans++;
    }
    var k = dans > 300 ? 0.45 : dans > 50 ? 0.7 : 1;
    ctx.lineWidth = k < 1 ? 1 : 1.5; ctx.globalAlpha = k;
    for (i = 0; i < n; i++) {
      if (lieu[i] !== i) continue;
      f = drap[i]; X = c.X(i); Y = c.Y(i);
      if (f & F.doublon) c.anneau(X, Y, 7 * k, DOUBLON);
      if (f & F.proche) c.anneau(X, Y, 10 * k, PROCHE);
      if (f & F.eloigne) c.anneau(X, Y, 13 * k, LOIN);
    }
    ctx.globalAlpha = 1;
  }
  function dessiner(ctx, c) {
    densite(ctx, c);
    anneaux(ctx, c);
    var i, f;
    for (i = 0; i < n; i++) {  // converted and skipped points above the rings, below the crosses
      f = drap[i];
      if (lieu[i] !== i || (f & F.rejete && nombre[i] === 1)) continue;
      ctx.fillStyle = P[5 * i + 4] & F.ignore ? IGNORE : COUL[P[5 * i + 3] % COUL.length];
      ctx.fillRect(c.X(i) - 1, c.Y(i) - 1, 3, 3);
    }
    for (i = 0; i < n; i++) if (lieu[i] === i && drap[i] & F.rejete) croix(ctx, c.X(i), c.Y(i));
  }
  function rangee(ligne) { return document.querySelector('tr[data-l="' + ligne + '"]'); }

  Carte(D, 5, {
    dessiner: dessiner,
    bulle: function (i) {
      var k = lieu[i], l = P[5 * k + 2], r = document.querySelector('#rejets tr[data-l="' + l + '"],[data-de=rejets] tr[data-l="' + l + '"]');
      var t = (nombre[k] > 1 ? T('%s points à cette place, le premier : ', nombre[k]) : '') + T('ligne %s', l) +
        ' — ' + D.id[k];
      return t + (r ? '\n' + r.cells[3].textContent : '');
    },
    selecteur: 'tr[data-l]',
    rangee: function (i) { return rangee(P[5 * i + 2]); },
    point: function (r) { var i = parLigne[r.getAttribute('data-l')]; return i === undefined ? -1 : i; }
  });
})();
