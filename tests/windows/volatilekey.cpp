// volatilekey KEY: makes a key of the user's registry that lasts until Windows ends. No key below
// it can be one that lasts longer, such as those of programs.
#include <windows.h>

int main(int, char **arguments) {
    HKEY key = nullptr;
    return static_cast<int>(RegCreateKeyExA(HKEY_CURRENT_USER, arguments[1], 0, nullptr,
                                            REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &key,
                                            nullptr));
}
