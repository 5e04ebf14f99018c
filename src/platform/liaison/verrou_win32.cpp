#include <windows.h>

#include "platform/liaison/verrou.h"
#include "platform/systeme/texte_win32.h"

namespace verrou {
namespace {

class VerrouWindows final : public Verrou {
  public:
    explicit VerrouWindows(HANDLE h) : h_(h) {}
    ~VerrouWindows() override {
        if (h_ != INVALID_HANDLE_VALUE) CloseHandle(h_);
    }

  private:
    HANDLE h_;
};

}  // namespace

std::unique_ptr<Verrou> prend(std::string_view fichier) {
    const std::wstring chemin = texte::large(fichier);
    const auto ouvre = [&](DWORD droits, DWORD maniere) {
        return CreateFileW(chemin.c_str(), droits, 0, nullptr, maniere, FILE_ATTRIBUTE_NORMAL, nullptr);
    };
    HANDLE h = ouvre(GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS);
    // One that only its maker may write can be held, too.
    if (h == INVALID_HANDLE_VALUE && GetLastError() != ERROR_SHARING_VIOLATION) h = ouvre(GENERIC_READ, OPEN_EXISTING);
    if (h == INVALID_HANDLE_VALUE && GetLastError() == ERROR_SHARING_VIOLATION) return nullptr;
    return std::make_unique<VerrouWindows>(h);
}

}  // namespace verrou
