// Read-only access to the Windows registry, which tells where the System
// Information tool lives. Elsewhere the registry does not exist and every
// value reads as absent.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace quillon {

// The root key of the machine-wide settings, as the registry functions know
// it (the handle value of HKEY_LOCAL_MACHINE).
inline constexpr uint32_t kHkeyLocalMachine = 0x80000002u;

class Registre {
 public:
  virtual ~Registre() = default;
  // Reads the value SubKeyRef of the key KeyName under KeyRoot into KeyVal.
  // True when the value was read. A missing key or value, or a key that
  // cannot be opened for query and set, gives false and an empty KeyVal. A
  // value that is not text gives true and leaves KeyVal as it was.
  virtual bool GetKeyValue(uint32_t KeyRoot, const std::string& KeyName, const std::string& SubKeyRef,
                           std::string& KeyVal) = 0;
};

// The machine's registry (on Windows), or the stand-in where there is none.
Registre& RegistreSysteme();

// The text of a value as the query returned it: the buffer cut to the size
// returned, then one NUL at its end dropped if there is one.
std::string TexteValeurRegistre(const char* tampon, std::size_t tailleRendue);

}  // namespace quillon
