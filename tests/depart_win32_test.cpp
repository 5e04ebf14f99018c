// How Windows starts programs: this one from directories with names of every kind, and others from it.
#include <windows.h>

#include <chrono>
#include <optional>
#include <thread>

#include "atelier.h"
#include "platform/systeme/processus.h"
#include "platform/systeme/texte_win32.h"

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using processus::Fenetre;

/// Runs the program to its end; its exit code, or nothing when it did not start.
std::optional<DWORD> lance(std::wstring mots) {
    std::wstring ligne = L"\"" + fs::path(PROGRAMME).wstring() + L"\" " + mots;
    STARTUPINFOW depart{};
    depart.cb = sizeof depart;
    PROCESS_INFORMATION p{};
    if (!CreateProcessW(nullptr, ligne.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &depart, &p)) return {};
    DWORD code = STILL_ACTIVE;
    WaitForSingleObject(p.hProcess, 20000);
    GetExitCodeProcess(p.hProcess, &code);
    CloseHandle(p.hThread);
    CloseHandle(p.hProcess);
    return code;
}

class Depart : public tests::Atelier {
  protected:
    /// What a file holds, once it has come: it is held for a moment while it gets its name.
    std::string vient(const std::string& nom) const {
        for (int i = 0; i < 1000 && terrain.lis(nom).empty(); ++i) std::this_thread::sleep_for(10ms);
        return terrain.lis(nom);
    }
    /// Under load the emulator now and then refuses a program that it starts the next time.
    static bool demarre(const std::string& commande, Fenetre fenetre) {
        for (int essai = 0; essai < 3; ++essai) {
            if (processus::lance(commande, fenetre)) return true;
        }
        return false;
    }
    /// Removes a file, which the system allows once nobody holds or runs it.
    static bool emporte(const fs::path& p) {
        std::error_code faute;
        for (int i = 0; i < 1000 && !fs::remove(p, faute); ++i) std::this_thread::sleep_for(10ms);
        return !fs::exists(p);
    }
};

TEST_F(Depart, LeRepertoireDUnUtilisateurDeNImporteQuelNom) {
    terrain.restaurant();
    fs::create_directory("scenes");
    terrain.pose("scenes/s.txt", "touche \"Sophie\"\nverifie btx(1) \"Viandes\"\ncapture vu.png\n");
    const std::wstring a_cote = L"vues d'\u00E9t\u00E9";
    for (const std::wstring nom : {L"\u0141ukasz Mu\u015Fat", L"\u00C9lodie \u0026 Cie", L"\u5317\u4EAC"}) {
        fs::create_directory(nom);
        for (const auto& e : fs::directory_iterator(".")) {
            if (e.is_regular_file()) fs::copy_file(e.path(), fs::path(nom) / e.path().filename());
        }
        fs::copy(terrain.reseau(), fs::path(nom) / "reseau");
        EXPECT_EQ(lance(L"--captures \"" + a_cote + L"\" --dossier \"" + nom + L"\" --rejoue scenes/s.txt"), 0u)
            << fs::path(nom);
        EXPECT_TRUE(fs::remove(fs::path(a_cote) / "vu.png")) << "beside, where the program was started";
        EXPECT_TRUE(fs::exists(fs::path(nom) / "reseau" / "Test.res")) << fs::path(nom);
    }
    EXPECT_EQ(lance(L"--dossier \u0141odz --rejoue scenes/s.txt"), 2u) << "there is no such directory";
}

TEST_F(Depart, UnAutreProgrammeRecoitSesMotsEtSaFenetre) {
    const fs::path chez = terrain.chemin() / L"Outils de la salle \u00E9t\u00E9";
    fs::create_directory(chez);
    fs::copy_file(TEMOIN, chez / "orvapara.exe");
    fs::copy_file(TEMOIN, "orvapara.exe");
    const std::string la_bas = texte::etroit_tolerant((chez / "orvapara.exe").wstring());
    const struct {
        std::string commande;
        Fenetre fenetre;
        std::string vu;
    } cas[] = {
        {"orvapara.exe vu", Fenetre::normale, "1\n"},
        {la_bas + " vu", Fenetre::agrandie, "3\n"},
        {"\"" + la_bas + "\" vu http://x/?a=1&b=%PATH%", Fenetre::agrandie, "3\nhttp://x/?a=1&b=%PATH%\n"},
        {"\"" + la_bas + "\" vu \"deux mots\" caf\xE9 \x80", Fenetre::normale,
         "1\ndeux mots\ncaf\xC3\xA9\n\xE2\x82\xAC\n"},
    };
    for (const auto& c : cas) {
        ASSERT_TRUE(demarre(c.commande, c.fenetre)) << c.commande;
        EXPECT_EQ(vient("vu"), c.vu) << c.commande;
        ASSERT_TRUE(emporte("vu"));
    }
    EXPECT_TRUE(emporte("orvapara.exe") && emporte(chez / "orvapara.exe"));
}

TEST_F(Depart, CeQuiNEstPasUnProgrammeNeSeLancePas) {
    terrain.pose("etranger.exe", std::string("MZ\0\0", 4) + "of another system");
    fs::create_directory("dossier.exe");
    for (const char* nom : {"absent.exe", "etranger.exe", "dossier.exe"}) {
        const std::string chemin = texte::etroit_tolerant((terrain.chemin() / nom).wstring());
        EXPECT_FALSE(processus::lance(chemin, Fenetre::normale)) << chemin;
        EXPECT_FALSE(processus::lance("\"" + chemin + "\" mot", Fenetre::normale)) << chemin;
    }
}

/// The installation gives every Windows one; the emulator's prefix may have none.
TEST_F(Depart, LaMachineAUnIdentifiant) {
    constexpr const wchar_t *cle = L"SOFTWARE\\Microsoft\\Cryptography", *nom = L"MachineGuid";
    constexpr wchar_t neuf[] = L"0c8a4a4e-5e9e-4b8c-9d2a-7b1c5a3f2e10";
    wchar_t lu[64] = {};
    const auto lit = [&] {
        DWORD octets = sizeof lu;
        return RegGetValueW(HKEY_LOCAL_MACHINE, cle, nom, RRF_RT_REG_SZ, nullptr, lu, &octets) == ERROR_SUCCESS;
    };
    if (!lit()) RegSetKeyValueW(HKEY_LOCAL_MACHINE, cle, nom, REG_SZ, neuf, sizeof neuf);
    ASSERT_TRUE(lit());
    EXPECT_EQ(processus::identifiant_machine(), texte::etroit_tolerant(lu));
    EXPECT_GE(processus::identifiant_machine().size(), 10u);
}

}  // namespace
