#include "conversion/file_system.h"

// Out-of-line home of the interfaces' vtables.
namespace quillon {}  // namespace quillon
