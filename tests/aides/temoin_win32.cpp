// A program for the tests to start: it writes how it was started (its window's state, then its words in UTF-8, each on
// a line) to the file that its first word names. The file has its name once it is whole.
#include <windows.h>

#include <cstdio>
#include <string>

namespace {

std::string utf8(const wchar_t* t) {
    std::string r(3 * std::char_traits<wchar_t>::length(t) + 1, '\0');
    r.resize(static_cast<std::size_t>(
        WideCharToMultiByte(CP_UTF8, 0, t, -1, r.data(), static_cast<int>(r.size()), nullptr, nullptr) - 1));
    return r;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc < 2) return 1;
    STARTUPINFOW depart{};
    GetStartupInfoW(&depart);
    const std::wstring partiel = std::wstring(argv[1]) + L".part";
    FILE* f = _wfopen(partiel.c_str(), L"wb");
    if (f == nullptr) return 1;
    std::fprintf(f, "%d\n", (depart.dwFlags & STARTF_USESHOWWINDOW) != 0 ? depart.wShowWindow : -1);
    for (int i = 2; i < argc; ++i) std::fprintf(f, "%s\n", utf8(argv[i]).c_str());
    std::fclose(f);
    return MoveFileExW(partiel.c_str(), argv[1], 0) != 0 ? 0 : 1;
}
