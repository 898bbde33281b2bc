// The comparison report's points on the map: both files' points in the
// colour of their category, the unchanged below; an arrow from each moved
// point's old place to its new one, lengthened by the factor D.f. A point is
// its Y, X, kind (its name in D.sortes) and the Y and X it moved to; its row
// carries its index in data-p.
(function () {
  var D = donneesPage(), P = D.p, n = P.length / 5;
  var STYLES = {
    identique: ['#b0b0b0', T('identique')], nouveau: ['#2ca02c', T('nouveau')], supprime: ['#d62728', T('supprimé')],
    deplace: ['#ff7f0e', T('déplacé (flèche ×%s)', D.f)], modifie: ['#1f77b4', T('modifié')],
    doublon: ['#9467bd', T('en double')]
  };
  var SORTES = D.sortes.map(function (s) { return STYLES[s]; }), DEPLACE = D.sortes.indexOf('deplace');
  var IDENTIQUE = D.sortes.indexOf('identique');
  SORTES.forEach(function (s, k) { entreeLegende(s[0], s[1], k === DEPLACE ? 'fleche' : ''); });

  function fleche(ctx, c, i) {
    var y = P[5 * i], x = P[5 * i + 1];
    var X0 = c.ex(y), Y0 = c.ey(x), X1 = c.ex(y + D.f * (P[5 * i + 3] - y)), Y1 = c.ey(x + D.f * (P[5 * i + 4] - x));
    var a = Math.atan2(Y1 - Y0, X1 - X0);
    ctx.beginPath(); ctx.moveTo(X0, Y0); ctx.lineTo(X1, Y1);
    ctx.moveTo(X1, Y1); ctx.lineTo(X1 - 8 * Math.cos(a - 0.4), Y1 - 8 * Math.sin(a - 0.4));
    ctx.moveTo(X1, Y1); ctx.lineTo(X1 - 8 * Math.cos(a + 0.4), Y1 - 8 * Math.sin(a + 0.4));
    ctx.stroke();
  }
  function dessiner(ctx, c) {
    for (var k = 0; k < SORTES.length; k++) {  // in the order of D.sortes: the unchanged first, below the rest
      ctx.fillStyle = ctx.strokeStyle = SORTES[k][0]; ctx.lineWidth = 1.5;
      for (var i = 0; i < n; i++) {
        if (P[5 * i + 2] !== k) continue;
        ctx.fillRect(c.X(i) - 2, c.Y(i) - 2, 4, 4);
        if (k === DEPLACE) fleche(ctx, c, i);
      }
    }
  }

  Carte(D, 5, {
    dessiner: dessiner,
    bulle: function (i) { return D.id[i] + ' — ' + SORTES[P[5 * i + 2]][1]; },
    selecteur: 'tr[data-p]',
    rangee: function (i) { return document.querySelector('tr[data-p="' + i + '"]'); },
    point: function (r) { return Number(r.getAttribute('data-p')); },
    devant: function (i) { return P[5 * i + 2] !== IDENTIQUE; }
  });
})();
