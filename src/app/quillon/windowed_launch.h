// Windowed mode lives in its own program, quillon-fenetres, installed beside
// quillon: console runs then never load the windowing libraries, and stay
// small in memory.
#pragma once

namespace quillon {

// Replaces this process by the windowed program, with the same arguments.
// Returns only when that failed, after one line on standard error; the
// result is then the exit status to end with.
int LancerModeFenetre(char** argv);

}  // namespace quillon
