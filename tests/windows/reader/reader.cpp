// For each empty line on its standard input, writes what is in the windows on screen, as far as
// their programs tell a screen reader; see automation.cpp. Any other line is the number of a
// window, which it activates.
#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <iostream>
#include <string>
#include <windows.h>

namespace {

constexpr LPARAM rootOfAutomation = -25;

std::string utf8(const wchar_t *text, int length) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, length, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, length, result.data(), size, nullptr, nullptr);
    return result;
}

LRESULT CALLBACK handle(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message != WM_COPYDATA) {
        return DefWindowProcW(window, message, first, second);
    }
    const auto &answer = *reinterpret_cast<const COPYDATASTRUCT *>(second);
    std::cout << utf8(static_cast<const wchar_t *>(answer.lpData),
                      static_cast<int>(answer.cbData / sizeof(wchar_t)));
    return TRUE;
}

BOOL CALLBACK ask(HWND window, LPARAM asker) {
    if (IsWindowVisible(window)) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        RECT frame{};
        GetWindowRect(window, &frame);
        std::cout << "window\x1f" << process << '\x1f' << reinterpret_cast<std::size_t>(window)
                  << '\x1f' << frame.left << ' ' << frame.top << ' ' << frame.right - frame.left
                  << ' ' << frame.bottom - frame.top << '\x1e';
        DWORD_PTR ignored = 0;
        constexpr UINT milliseconds = 5000;
        SendMessageTimeoutW(window, WM_GETOBJECT, static_cast<WPARAM>(asker), rootOfAutomation,
                            SMTO_NORMAL, milliseconds, &ignored);
    }
    return TRUE;
}

}  // namespace

int main() {
    _setmode(_fileno(stdout), _O_BINARY);
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    WNDCLASSW type{};
    type.lpfnWndProc = handle;
    type.hInstance = instance;
    type.lpszClassName = L"reader";
    RegisterClassW(&type);
    HWND asker = CreateWindowW(type.lpszClassName, nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                               instance, nullptr);
    std::string line;
    while (std::getline(std::cin, line)) {
        if (line.empty()) {
            EnumWindows(ask, reinterpret_cast<LPARAM>(asker));
        } else {
            SetForegroundWindow(reinterpret_cast<HWND>(std::stoull(line)));
        }
        std::cout << "\x1d" << std::endl;
    }
}
