#include <windows.h>

#include "platform/console/arret.h"
#include "platform/liaison/guet.h"
#include "platform/systeme/texte_win32.h"

namespace guet {
namespace {

class GuetWindows final : public Guet {
  public:
    explicit GuetWindows(std::string_view repertoire)
        : h_(FindFirstChangeNotificationW(texte::large(repertoire).c_str(), FALSE,
                                          FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_SIZE)) {}
    ~GuetWindows() override {
        if (h_ != INVALID_HANDLE_VALUE) FindCloseChangeNotification(h_);
    }

    void attend(int ms) override {
        HANDLE veille[2];
        DWORD n = 0;
        if (arret::evenement() != nullptr) veille[n++] = arret::evenement();
        if (h_ != INVALID_HANDLE_VALUE) veille[n++] = h_;
        if (n == 0) return Sleep(static_cast<DWORD>(ms));
        const DWORD r = WaitForMultipleObjects(n, veille, FALSE, static_cast<DWORD>(ms));
        if (r == WAIT_TIMEOUT || veille[r - WAIT_OBJECT_0] != h_) return;
        // A share that is gone would call again and again.
        if (!FindNextChangeNotification(h_)) {
            FindCloseChangeNotification(h_);
            h_ = INVALID_HANDLE_VALUE;
        }
    }

  private:
    HANDLE h_;
};

}  // namespace

std::unique_ptr<Guet> ouvre(std::string_view repertoire) {
    return std::make_unique<GuetWindows>(repertoire);
}

}  // namespace guet
