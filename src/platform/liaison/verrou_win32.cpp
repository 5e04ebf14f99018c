#include <windows.h>

#include "platform/liaison/verrou.h"
#include "platform/systeme/texte_win32.h"

namespace verrou {
namespace {

using fichiers::Issue;

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

std::unique_ptr<Verrou> prend(std::string_view fichier, Issue& issue) {
    const std::wstring chemin = texte::large(fichier);
    DWORD erreur = ERROR_SUCCESS;
    const auto ouvre = [&](DWORD droits, DWORD maniere) {
        HANDLE h = CreateFileW(chemin.c_str(), droits, 0, nullptr, maniere, FILE_ATTRIBUTE_NORMAL, nullptr);
        erreur = h == INVALID_HANDLE_VALUE ? GetLastError() : ERROR_SUCCESS;
        return h;
    };
    HANDLE h = ouvre(GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS);
    // One that only its maker may write can be held, too.
    if (erreur != ERROR_SUCCESS && erreur != ERROR_SHARING_VIOLATION) h = ouvre(GENERIC_READ, OPEN_EXISTING);
    const bool interdit = erreur == ERROR_ACCESS_DENIED || erreur == ERROR_WRITE_PROTECT;
    issue = erreur == ERROR_SHARING_VIOLATION                                  ? Issue::occupe
            : erreur == ERROR_FILE_NOT_FOUND || erreur == ERROR_PATH_NOT_FOUND ? Issue::absent
            : erreur == ERROR_SUCCESS || interdit                              ? Issue::fait
                                                                               : Issue::panne;
    if (issue != Issue::fait) return nullptr;
    return std::make_unique<VerrouWindows>(h);
}

}  // namespace verrou
