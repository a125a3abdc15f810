// Stands in for the UI Automation library, through which Windows' screen readers see a program. Wine's
// own waits forever for the first item inside a window of Qt.
//
// It answers who sends WM_GETOBJECT, with a window of its own as first parameter, with what the
// program provides of the window: a WM_COPYDATA with a line for each item in it.
#include <uiautomationclient.h>

#include <memory>
#include <string>

namespace {

struct Release {
    void operator()(IUnknown *object) const { object->Release(); }
};
template <class Interface>
using Owned = std::unique_ptr<Interface, Release>;

constexpr wchar_t endOfField = L'\x1f';
constexpr wchar_t endOfItem = L'\x1e';

std::wstring property(IRawElementProviderFragment &item, PROPERTYID id) {
    IRawElementProviderSimple *simple = nullptr;
    if (item.QueryInterface(__uuidof(IRawElementProviderSimple),
                            reinterpret_cast<void **>(&simple)) != S_OK) {
        return {};
    }
    const Owned<IRawElementProviderSimple> owned(simple);
    VARIANT value;
    VariantInit(&value);
    std::wstring text;
    if (simple->GetPropertyValue(id, &value) == S_OK) {
        if (value.vt == VT_BSTR && value.bstrVal != nullptr) {
            text = value.bstrVal;
        } else if (value.vt == VT_I4) {
            text = std::to_wstring(value.lVal);
        } else if (value.vt == VT_BOOL && value.boolVal != VARIANT_FALSE) {
            text = L"yes";
        }
    }
    VariantClear(&value);
    return text;
}

/// What the item is known by for as long as it lives.
std::wstring identity(IRawElementProviderFragment &item) {
    SAFEARRAY *numbers = nullptr;
    std::wstring text;
    if (item.GetRuntimeId(&numbers) == S_OK && numbers != nullptr) {
        LONG last = -1;
        SafeArrayGetUBound(numbers, 1, &last);
        for (LONG index = 0; index <= last; ++index) {
            int number = 0;
            SafeArrayGetElement(numbers, &index, &number);
            text += L'.' + std::to_wstring(number);
        }
        SafeArrayDestroy(numbers);
    }
    return text;
}

std::wstring place(IRawElementProviderFragment &item) {
    UiaRect rect{};
    if (item.get_BoundingRectangle(&rect) != S_OK) {
        return {};
    }
    std::wstring text;
    for (const double number : {rect.left, rect.top, rect.width, rect.height}) {
        text += std::to_wstring(static_cast<int>(number)) + L' ';
    }
    return text;
}

Owned<IRawElementProviderFragment> next(IRawElementProviderFragment &item,
                                        NavigateDirection direction) {
    IRawElementProviderFragment *found = nullptr;
    item.Navigate(direction, &found);
    return Owned<IRawElementProviderFragment>(found);
}

void describe(IRawElementProviderFragment &item, int depth, std::wstring &text) {
    text += std::to_wstring(depth) + endOfField + identity(item) + endOfField + place(item);
    for (const PROPERTYID id :
         {UIA_ControlTypePropertyId, UIA_NamePropertyId, UIA_FullDescriptionPropertyId,
          UIA_IsEnabledPropertyId, UIA_IsKeyboardFocusablePropertyId,
          UIA_HasKeyboardFocusPropertyId, UIA_IsOffscreenPropertyId}) {
        text += endOfField + property(item, id);
    }
    text += endOfItem;
    for (auto child = next(item, NavigateDirection_FirstChild); child;
         child = next(*child, NavigateDirection_NextSibling)) {
        describe(*child, depth + 1, text);
    }
}

}  // namespace

#define EXPORTED extern "C" __declspec(dllexport)

EXPORTED LRESULT WINAPI UiaReturnRawElementProvider(HWND window, WPARAM asker, LPARAM,
                                                    IRawElementProviderSimple *provider) {
    IRawElementProviderFragment *item = nullptr;
    if (provider->QueryInterface(__uuidof(IRawElementProviderFragment),
                                 reinterpret_cast<void **>(&item)) == S_OK) {
        const Owned<IRawElementProviderFragment> owned(item);
        std::wstring text;
        describe(*item, 0, text);
        COPYDATASTRUCT answer{.dwData = 0,
                              .cbData = static_cast<DWORD>(text.size() * sizeof(wchar_t)),
                              .lpData = text.data()};
        SendMessageW(reinterpret_cast<HWND>(asker), WM_COPYDATA,
                     reinterpret_cast<WPARAM>(window), reinterpret_cast<LPARAM>(&answer));
    }
    return 0;
}

EXPORTED BOOL WINAPI UiaClientsAreListening() {
    return TRUE;
}

EXPORTED HRESULT WINAPI UiaHostProviderFromHwnd(HWND, IRawElementProviderSimple **provider) {
    *provider = nullptr;
    return E_NOTIMPL;
}

EXPORTED HRESULT WINAPI UiaRaiseAutomationEvent(IRawElementProviderSimple *, EVENTID) {
    return S_OK;
}

EXPORTED HRESULT WINAPI UiaRaiseAutomationPropertyChangedEvent(IRawElementProviderSimple *,
                                                               PROPERTYID, VARIANT, VARIANT) {
    return S_OK;
}
