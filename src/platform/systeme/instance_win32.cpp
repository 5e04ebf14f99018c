// The claim is a mutex of the machine by the directory's name, which the system gives up with the process: two users
// may share a directory. Two events beside it carry the call and the answer, and a mutex of the session tells a later
// start whether it is in the same one.
#include <windows.h>

#include <cstdint>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/systeme/instance.h"

namespace instance {
namespace {

class Objet {
  public:
    explicit Objet(HANDLE h = nullptr) : h_(h) {}
    Objet(Objet&& o) noexcept : h_(std::exchange(o.h_, nullptr)) {}
    Objet& operator=(Objet&& o) noexcept {
        std::swap(h_, o.h_);
        return *this;
    }
    ~Objet() {
        if (h_ != nullptr) CloseHandle(h_);
    }
    operator HANDLE() const { return h_; }

  private:
    HANDLE h_;
};

/// The working directory's one true path: short names, substituted drives and links are resolved.
std::wstring vrai_chemin() {
    HANDLE h = CreateFileW(L".", 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                           FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    std::wstring r(32768, L'\0');
    const auto taille = static_cast<DWORD>(r.size());
    DWORD n = h == INVALID_HANDLE_VALUE ? 0 : GetFinalPathNameByHandleW(h, r.data(), taille, FILE_NAME_NORMALIZED);
    if (h != INVALID_HANDLE_VALUE) CloseHandle(h);
    if (n == 0 || n >= taille) n = GetCurrentDirectoryW(taille, r.data());
    r.resize(n < taille ? n : 0);
    CharUpperBuffW(r.data(), static_cast<DWORD>(r.size()));
    return r;
}

/// The path's 64-bit FNV-1a hash: a path is too long for a name and holds characters that a name must not.
std::wstring nom_de(const std::wstring& chemin) {
    std::uint64_t h = 0xCBF29CE484222325u;
    for (const wchar_t c : chemin) h = (h ^ static_cast<std::uint16_t>(c)) * 0x100000001B3u;
    return L"Orvalune-" + std::to_wstring(h);
}

/// Every user of the machine may open what one has made.
SECURITY_ATTRIBUTES* pour_tous() {
    static SECURITY_DESCRIPTOR descripteur;
    static SECURITY_ATTRIBUTES attributs = {sizeof attributs, &descripteur, FALSE};
    InitializeSecurityDescriptor(&descripteur, SECURITY_DESCRIPTOR_REVISION);
    SetSecurityDescriptorDacl(&descripteur, TRUE, nullptr, FALSE);
    return &attributs;
}

struct Objets {
    Objet prise;
    bool refusee;          ///< the claim is that of a process with higher rights
    Objet appel, reponse;  ///< an answer is for all who call at that time, until the next one calls
    Objet seance;          ///< made by the first one when it has the claim

    explicit Objets(const std::wstring& nom)
        : prise(CreateMutexW(pour_tous(), FALSE, (L"Global\\" + nom).c_str())),
          refusee(prise == nullptr && GetLastError() == ERROR_ACCESS_DENIED),
          appel(CreateEventW(pour_tous(), FALSE, FALSE, (L"Global\\" + nom + L"-appel").c_str())),
          reponse(CreateEventW(pour_tous(), TRUE, FALSE, (L"Global\\" + nom + L"-reponse").c_str())) {}
};

bool meme_seance(const std::wstring& nom) {
    return Objet(OpenMutexW(SYNCHRONIZE, FALSE, (L"Local\\" + nom).c_str())) != nullptr;
}

bool est_prise(DWORD attente) {
    return attente == WAIT_OBJECT_0 || attente == WAIT_ABANDONED_0;
}

class PriseWindows final : public Prise {
  public:
    PriseWindows(Objets o, bool tenue)
        : objets_(std::move(o)), fin_(CreateEventW(nullptr, TRUE, FALSE, nullptr)), tenue_(tenue) {}
    ~PriseWindows() override {
        cesse();
        if (tenue_) ReleaseMutex(objets_.prise);
    }

    void ecoute(std::function<void()> appel) override {
        if (!tenue_ || fin_ == nullptr || fil_.joinable()) return;
        try {
            fil_ = std::thread([this, appel = std::move(appel)] { sert(appel); });
        } catch (const std::system_error&) {
            // Nobody answers then: a later start ends all the same.
        }
    }

    void cesse() override {
        if (!fil_.joinable()) return;
        SetEvent(fin_);
        fil_.join();
    }

  private:
    Objets objets_;
    Objet fin_;
    bool tenue_;
    std::thread fil_;

    void sert(const std::function<void()>& appel) const {
        const HANDLE veille[] = {fin_, objets_.appel};
        while (WaitForMultipleObjects(2, veille, FALSE, INFINITE) == WAIT_OBJECT_0 + 1) {
            appel();
            SetEvent(objets_.reponse);
        }
    }
};

std::unique_ptr<Prise> prise_de(Objets o, const std::wstring& nom) {
    o.seance = Objet(CreateMutexW(nullptr, FALSE, (L"Local\\" + nom).c_str()));
    return std::make_unique<PriseWindows>(std::move(o), true);
}

}  // namespace

std::unique_ptr<Prise> prend(bool& appelee) {
    appelee = false;
    const std::wstring nom = nom_de(vrai_chemin());
    Objets o(nom);
    if (o.refusee) return nullptr;
    if (o.prise == nullptr || o.appel == nullptr || o.reponse == nullptr) {
        return std::make_unique<PriseWindows>(std::move(o), false);
    }
    if (est_prise(WaitForSingleObject(o.prise, 0))) return prise_de(std::move(o), nom);
    AllowSetForegroundWindow(ASFW_ANY);  // the first one may come to the front, as this one might
    ResetEvent(o.reponse);  // an earlier one's, which had given up; whoever still waits for it gets the next one too
    SetEvent(o.appel);
    // The claim comes first: when the first one ends while it is called, this one takes its place.
    const HANDLE veille[] = {o.prise, o.reponse};
    const DWORD fin = WaitForMultipleObjects(2, veille, FALSE, attente_ms);
    if (est_prise(fin)) return prise_de(std::move(o), nom);
    appelee = fin == WAIT_OBJECT_0 + 1 && meme_seance(nom);
    return nullptr;
}

}  // namespace instance
