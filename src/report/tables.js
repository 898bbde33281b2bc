// Every page's script begins here: an error shows as data-erreur on the
// body.
// Long tables: past a block of rows, the rows of table #ID sit in blocks
// that follow it, div.bloc[data-de=ID], each a table of its own that the
// browser lays out only when in sight. Once the page is read, the columns
// take the width of the first block's or of their heading's longest word,
// whichever is wider (on screen only); printed, the rows gather under the headings,
// repeated on each page, and go back to their blocks afterwards.
'use strict';
window.addEventListener('error', function (e) { document.body.setAttribute('data-erreur', String(e.message)); });
// The page's words in the user's language: the block #textes, when the page
// has one, maps each text of the scripts to its translation. T(text, values)
// gives it with %s (in order) or %N$s (the Nth value) replaced.
var TEXTES = (function () { var e = document.getElementById('textes'); return e ? JSON.parse(e.textContent) : {}; })();
function T(texte) {
  var valeurs = Array.prototype.slice.call(arguments, 1), k = 0;
  return (TEXTES[texte] || texte).replace(/%(?:(\d)\$)?s/g, function (m, n) {
    return String(valeurs[n ? n - 1 : k++]);
  });
}
function Blocs(table) {
  var corps = Array.prototype.slice.call(document.querySelectorAll('div.bloc[data-de="' + table.id + '"] tbody'));
  var enBlocs = corps.length > 0;
  if (!enBlocs) corps = [table.tBodies[0]];
  var taille = Math.max(corps[0].rows.length, 1);
  return {
    enBlocs: enBlocs,
    rangees: function () {
      var r = [];
      corps.forEach(function (b) { r = r.concat(Array.prototype.slice.call(b.rows)); });
      return r;
    },
    // The rows r, in this order, in their blocks; or all under the headings.
    placer: function (r, ensemble) {
      for (var k = 0; k < r.length; k += taille) {
        var f = document.createDocumentFragment();
        r.slice(k, k + taille).forEach(function (x) { f.appendChild(x); });
        (ensemble ? table.tBodies[0] : corps[k / taille]).appendChild(f);
      }
    },
    aligner: function () {
      if (!enBlocs || !corps[0].rows.length) return;
      var premiere = corps[0].rows[0].cells, id = '#' + table.id, bloc = 'div.bloc[data-de="' + table.id + '"]';
      var total = 0, regles = '', entetes = table.tHead.rows[0].cells;
      table.style.width = '1px';  // the headings at their narrowest, a word a line
      var minimums = Array.prototype.map.call(entetes, function (th) { return th.getBoundingClientRect().width; });
      table.style.width = '';
      Array.prototype.forEach.call(entetes, function (th, k) {
        var l = Math.max(minimums[k], premiere[k] ? premiere[k].getBoundingClientRect().width : 0);
        var n = ' tr>:nth-child(' + (k + 1) + ')';
        total += Math.ceil(l);
        regles += id + n + ',' + bloc + n + '{width:' + Math.ceil(l) + 'px}';
      });
      var style = document.createElement('style');
      style.textContent = '@media screen{' + id + ',' + bloc + ' table{table-layout:fixed;width:' + total + 'px}' +
        id + ' th,' + id + ' td,' + bloc + ' td{box-sizing:border-box}' + regles + '}';
      document.head.appendChild(style);
    }
  };
}
(function () {
  var longues = Array.prototype.map.call(document.querySelectorAll('table[id]'), Blocs).filter(function (b) {
    return b.enBlocs;
  });
  longues.forEach(function (b) { b.aligner(); });
  var pendant = [];
  window.addEventListener('beforeprint', function () {
    pendant = longues.map(function (b) { var r = b.rangees(); b.placer(r, true); return r; });
  });
  window.addEventListener('afterprint', function () {
    longues.forEach(function (b, k) { if (pendant[k]) b.placer(pendant[k], false); });
  });
})();
