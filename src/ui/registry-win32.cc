// The registry through advapi32, in its 8-bit-character form.
#include <windows.h>

#include "ui/registry.h"

namespace quillon {
namespace {

// Query and set values, create and enumerate subkeys, notify, create link,
// read control: what the key is opened with.
constexpr REGSAM kAccesCle = 0x2003F;
constexpr DWORD kTailleTampon = 1024;

HKEY CleRacine(uint32_t KeyRoot) {
  return reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(static_cast<LONG>(KeyRoot)));
}

class RegistreWindows : public Registre {
 public:
  bool GetKeyValue(uint32_t KeyRoot, const std::string& KeyName, const std::string& SubKeyRef,
                   std::string& KeyVal) override {
    HKEY cle = nullptr;
    if (RegOpenKeyExA(CleRacine(KeyRoot), KeyName.c_str(), 0, kAccesCle, &cle) != ERROR_SUCCESS) {
      KeyVal.clear();
      if (cle != nullptr) RegCloseKey(cle);
      return false;
    }

    char tampon[kTailleTampon] = {};
    DWORD taille = kTailleTampon;
    DWORD type = 0;
    if (RegQueryValueExA(cle, SubKeyRef.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(tampon), &taille) !=
        ERROR_SUCCESS) {
      KeyVal.clear();
      RegCloseKey(cle);
      return false;
    }

    const std::string texte = TexteValeurRegistre(tampon, taille < kTailleTampon ? taille : kTailleTampon);
    if (type == REG_SZ) KeyVal = texte;
    RegCloseKey(cle);
    return true;
  }
};

}  // namespace

Registre& RegistreSysteme() {
  static RegistreWindows registre;
  return registre;
}

}  // namespace quillon
