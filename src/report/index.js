// The index of a batch's reports: a column heading clicked sorts the
// files by that column (again: the other way), names in the natural order
// that each row's data-o gives, the outcome by the rank in its data-v, the
// counts as numbers (empty: below 0); the box #filtre keeps the files whose
// name holds its text; #montres says how many are shown.
(function () {
  var table = document.getElementById('fichiers');
  if (!table) return;
  var blocs = Blocs(table), rangees = blocs.rangees(), tri = -1, descendant = false;
  var filtre = document.getElementById('filtre'), montres = document.getElementById('montres');

  function cle(r, c) {
    var td = r.cells[c], v = td.getAttribute('data-v');
    if (v !== null) return Number(v);
    if (td.classList.contains('nom')) return Number(r.getAttribute('data-o'));
    return td.textContent === '' ? -1 : Number(td.textContent);
  }
  function trier(c) {
    descendant = c === tri ? !descendant : false;
    tri = c;
    var cles = new Map();
    rangees.forEach(function (r) { cles.set(r, cle(r, c)); });
    rangees.sort(function (a, b) {
      var d = cles.get(a) - cles.get(b);
      if (d === 0) d = Number(a.getAttribute('data-o')) - Number(b.getAttribute('data-o'));
      return descendant ? -d : d;
    });
    blocs.placer(rangees, false);
    Array.prototype.forEach.call(table.tHead.rows[0].cells, function (th, k) {
      th.setAttribute('aria-sort', k === c ? (descendant ? 'descending' : 'ascending') : 'none');
    });
  }
  function filtrer() {
    var t = filtre.value.toLowerCase(), n = 0;
    rangees.forEach(function (r) {
      var garde = t === '' || r.querySelector('td.nom').textContent.toLowerCase().indexOf(t) >= 0;
      r.hidden = !garde;
      if (garde) n++;
    });
    montres.textContent = T('%1$s fichier(s) sur %2$s', n, rangees.length);
  }
  table.tHead.addEventListener('click', function (e) {
    var th = e.target.closest('th');
    if (th && th.cellIndex > 0) trier(th.cellIndex);
  });
  filtre.addEventListener('input', filtrer);
  filtrer();
  table.setAttribute('data-pret', '1');
})();
