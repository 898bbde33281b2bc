// The printed pages of the file shown (print_layout.h), painted on a Qt
// printer: the page's millimetres turned into the printer's dots.
#pragma once

#include <vector>

#include <QSizeF>

#include "ui/print_layout.h"

class QPrinter;

namespace quillon {

// The printable area of the printer's page, in millimetres.
QSizeF ZoneImprimable(const QPrinter& imprimante);

// Paints the pages on the printer, a new sheet for each after the first.
void PeindrePages(QPrinter& imprimante, const std::vector<Page>& pages);

}  // namespace quillon
