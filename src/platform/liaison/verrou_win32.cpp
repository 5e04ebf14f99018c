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
    HANDLE h = CreateFileW(texte::large(fichier).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
    if (h == INVALID_HANDLE_VALUE && GetLastError() == ERROR_SHARING_VIOLATION) return nullptr;
    return std::make_unique<VerrouWindows>(h);
}

}  // namespace verrou
