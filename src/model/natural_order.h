// The natural order of names, as the batch's table and index list files.
#pragma once

#include <string_view>

namespace quillon {

// Whether `a` comes before `b` in natural order: runs of digits compare as
// numbers ("f2" before "f10"), the rest byte for byte without regard to the
// case of ASCII letters; equal so far, the shorter first, then byte order.
bool AvantNaturel(std::string_view a, std::string_view b);

}  // namespace quillon
