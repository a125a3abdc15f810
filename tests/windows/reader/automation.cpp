// Stands in for the UI Automation library, through which Windows' screen readers see a program.
// Wine's own waits forever for the first item inside a window of Qt.
//
// It answers who sends WM_GETOBJECT, with a window of its own as first parameter, with what the
// program provides of the window: a WM_COPYDATA with a line for each item in it.
#include <memory>
#include <string>
#include <uiautomationclient.h>

// Missing in the compiler's headers.
enum ToggleState { ToggleState_Off, ToggleState_On, ToggleState_Indeterminate };

struct IToggleProvider : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Toggle() = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ToggleState(ToggleState *state) = 0;
};
__CRT_UUID_DECL(IToggleProvider, 0x56d00bd0, 0xc4f4, 0x433c, 0xa8, 0x36, 0x1a, 0x52, 0xa5, 0x7e,
                0x08, 0x92)

struct ISelectionItemProvider : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Select() = 0;
    virtual HRESULT STDMETHODCALLTYPE AddToSelection() = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveFromSelection() = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsSelected(BOOL *isSelected) = 0;
};
__CRT_UUID_DECL(ISelectionItemProvider, 0x2acad808, 0xb2d4, 0x452d, 0xa4, 0x07, 0x91, 0xff, 0x1a,
                0xd1, 0x67, 0xb2)

namespace {

struct Release {
    void operator()(IUnknown *object) const { object->Release(); }
};
template <class Interface>
using Owned = std::unique_ptr<Interface, Release>;

constexpr wchar_t endOfField = L'\x1f';
constexpr wchar_t endOfItem = L'\x1e';

/// The object as one that has that interface too.
template <class Interface>
Owned<Interface> as(IUnknown &object) {
    void *found = nullptr;
    object.QueryInterface(__uuidof(Interface), &found);
    return Owned<Interface>(static_cast<Interface *>(found));
}

std::wstring property(IRawElementProviderSimple &item, PROPERTYID id) {
    VARIANT value;
    VariantInit(&value);
    std::wstring text;
    if (item.GetPropertyValue(id, &value) == S_OK) {
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

/// Whether an option is chosen or a menu item has a tick.
bool isChecked(IRawElementProviderSimple &item) {
    IUnknown *pattern = nullptr;
    BOOL chosen = FALSE;
    if (item.GetPatternProvider(UIA_SelectionItemPatternId, &pattern) == S_OK && pattern) {
        const Owned<IUnknown> owned(pattern);
        as<ISelectionItemProvider>(*pattern)->get_IsSelected(&chosen);
    }
    ToggleState state = ToggleState_Off;
    if (item.GetPatternProvider(UIA_TogglePatternId, &pattern) == S_OK && pattern) {
        const Owned<IUnknown> owned(pattern);
        as<IToggleProvider>(*pattern)->get_ToggleState(&state);
    }
    return chosen != FALSE || state == ToggleState_On;
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
    const auto simple = as<IRawElementProviderSimple>(item);
    for (const PROPERTYID id :
         {UIA_ControlTypePropertyId, UIA_NamePropertyId, UIA_FullDescriptionPropertyId,
          UIA_IsEnabledPropertyId, UIA_IsKeyboardFocusablePropertyId,
          UIA_HasKeyboardFocusPropertyId}) {
        text += endOfField + property(*simple, id);
    }
    text += endOfField;
    text += isChecked(*simple) ? L"yes" : L"";
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
    if (const auto item = as<IRawElementProviderFragment>(*provider)) {
        std::wstring text;
        describe(*item, 0, text);
        COPYDATASTRUCT answer{.dwData = 0,
                              .cbData = static_cast<DWORD>(text.size() * sizeof(wchar_t)),
                              .lpData = text.data()};
        SendMessageW(reinterpret_cast<HWND>(asker), WM_COPYDATA, reinterpret_cast<WPARAM>(window),
                     reinterpret_cast<LPARAM>(&answer));
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
