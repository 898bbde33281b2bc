#include "test_support.h"

#include "conversion/encoding.h"

namespace quillon::test {

std::string W(std::string_view utf8) { return Utf8VersCp1252(utf8); }

}  // namespace quillon::test
