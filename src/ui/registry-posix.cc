// Where there is no registry: no key can be opened, so every value reads as
// absent and the about box reports the System Information tool unavailable.
#include "ui/registry.h"

namespace quillon {
namespace {

class RegistreAbsent : public Registre {
 public:
  bool GetKeyValue(uint32_t, const std::string&, const std::string&, std::string& KeyVal) override {
    KeyVal.clear();
    return false;
  }
};

}  // namespace

Registre& RegistreSysteme() {
  static RegistreAbsent registre;
  return registre;
}

}  // namespace quillon
