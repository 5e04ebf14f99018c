// The claim as other sessions and other users of the same Windows see it: the names are the machine's, and anyone may
// open them.
#include <windows.h>

#include <cstdint>
#include <future>

#include "atelier.h"
#include "platform/systeme/instance.h"

namespace {

class Seances : public tests::Atelier {
  protected:
    const std::wstring nom = L"Global\\" + nom_du_repertoire();

    static std::unique_ptr<instance::Prise> prend() {
        bool appelee = false;
        return instance::prend(appelee);
    }

  private:
    /// As every version of the program must name it: an update may run beside the old one.
    std::wstring nom_du_repertoire() const {
        std::wstring chemin = L"\\\\?\\" + std::filesystem::canonical(terrain.chemin()).make_preferred().wstring();
        CharUpperW(chemin.data());
        std::uint64_t h = 0xCBF29CE484222325u;
        for (const wchar_t c : chemin) h = (h ^ c) * 0x100000001B3u;
        return L"Orvalune-" + std::to_wstring(h);
    }
};

TEST_F(Seances, ToutUtilisateurPeutOuvrirLaPrise) {
    const auto prise = prend();
    ASSERT_TRUE(prise);
    for (const wchar_t* suite : {L"", L"-appel", L"-reponse"}) {
        const std::wstring n = nom + suite;
        HANDLE h =
            *suite == 0 ? OpenMutexW(READ_CONTROL, FALSE, n.c_str()) : OpenEventW(READ_CONTROL, FALSE, n.c_str());
        ASSERT_NE(h, nullptr) << suite;
        alignas(void*) BYTE descripteur[1024];
        DWORD octets = 0;
        BOOL donnee = FALSE, implicite = FALSE;
        ACL* liste = nullptr;
        EXPECT_TRUE(GetKernelObjectSecurity(h, DACL_SECURITY_INFORMATION, descripteur, sizeof descripteur, &octets));
        EXPECT_TRUE(GetSecurityDescriptorDacl(descripteur, &donnee, &liste, &implicite));
        EXPECT_TRUE(donnee && liste == nullptr) << "a list would keep other users out";
        CloseHandle(h);
    }
}

/// It answers, but its window is on nobody's screen here.
TEST_F(Seances, UnPremierDUneAutreSeanceNEstPasDevant) {
    HANDLE prise = CreateMutexW(nullptr, TRUE, nom.c_str());
    HANDLE appel = CreateEventW(nullptr, FALSE, FALSE, (nom + L"-appel").c_str());
    HANDLE reponse = CreateEventW(nullptr, FALSE, FALSE, (nom + L"-reponse").c_str());
    bool appelee = true;
    auto second = std::async(std::launch::async, [&] { return instance::prend(appelee) != nullptr; });
    EXPECT_EQ(WaitForSingleObject(appel, 20'000), WAIT_OBJECT_0) << "it is called all the same";
    SetEvent(reponse);
    EXPECT_FALSE(second.get());
    EXPECT_FALSE(appelee);
    for (HANDLE h : {prise, appel, reponse}) CloseHandle(h);
    EXPECT_TRUE(prend());
}

}  // namespace
