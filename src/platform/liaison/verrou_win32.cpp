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
    const auto ouvre = [&](DWORD droits, DWORD maniere) {
        return CreateFileW(chemin.c_str(), droits, 0, nullptr, maniere, FILE_ATTRIBUTE_NORMAL, nullptr);
    };
    HANDLE h = ouvre(GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS);
    DWORD erreur = h == INVALID_HANDLE_VALUE ? GetLastError() : ERROR_SUCCESS;
    if (erreur == ERROR_ACCESS_DENIED || erreur == ERROR_WRITE_PROTECT) {
        h = ouvre(GENERIC_READ, OPEN_EXISTING);  // one that only its maker may write can be held, too
        const bool tenu = h == INVALID_HANDLE_VALUE && GetLastError() == ERROR_SHARING_VIOLATION;
        erreur = tenu ? ERROR_SHARING_VIOLATION : ERROR_SUCCESS;
    }
    const bool absent = erreur == ERROR_FILE_NOT_FOUND || erreur == ERROR_PATH_NOT_FOUND;
    issue = erreur == ERROR_SUCCESS             ? Issue::fait
            : erreur == ERROR_SHARING_VIOLATION ? Issue::occupe
            : absent                            ? Issue::absent
                                                : Issue::panne;
    if (issue != Issue::fait) return nullptr;
    return std::make_unique<VerrouWindows>(h);
}

}  // namespace verrou
