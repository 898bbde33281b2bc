// Quillon's icon: a 32 x 32 sheet of a point file, with a plot whose corners
// are surveyed points, drawn in the sixteen colours of the classic palette.
#pragma once

#include <QPixmap>

namespace quillon {

QPixmap IconeApplication();

}  // namespace quillon
