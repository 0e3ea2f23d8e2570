// The shell's link object: IShellLinkW saved and loaded through IPersistFile.
#include "foundation/TextEncoding.h"
#include "themes/ShellLinkFile.h"

#include <objbase.h>
#include <objidl.h>
#include <shlobj.h>
#include <shobjidl.h>
#include <windows.h>

#include <array>
#include <string>

namespace glyphmoor {

namespace {

std::wstring Wide(std::string_view utf8) {
    const std::u16string text = Utf8ToUtf16(utf8);
    return {text.begin(), text.end()};
}

std::string Narrow(const wchar_t* text) {
    const std::wstring wide(text);
    return Utf16ToUtf8(std::u16string(wide.begin(), wide.end()));
}

// COM for the calling thread for the object's lifetime.
class ComScope {
public:
    ComScope() : m_ok(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
    ~ComScope() {
        if (m_ok) {
            CoUninitialize();
        }
    }
    ComScope(const ComScope&) = delete;
    ComScope& operator=(const ComScope&) = delete;

private:
    bool m_ok;
};

template <typename T>
class ComPtr {
public:
    ComPtr() = default;
    ~ComPtr() {
        if (m_p != nullptr) {
            m_p->Release();
        }
    }
    ComPtr(const ComPtr&) = delete;
    ComPtr& operator=(const ComPtr&) = delete;
    T** Out() { return &m_p; }
    T* operator->() const { return m_p; }
    T* Get() const { return m_p; }

private:
    T* m_p = nullptr;
};

Failure ComFailure(std::string_view what, HRESULT hr) {
    return Fail(std::string(what) + " (HRESULT 0x" + std::to_string(static_cast<unsigned long>(hr)) + ")");
}

// A new shell link object of the system.
HRESULT MakeShellLink(ComPtr<IShellLinkW>& shellLink) {
    return CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                            reinterpret_cast<void**>(shellLink.Out()));
}

}  // namespace

Status SaveSystemShellLink(const std::filesystem::path& file, const ShellLink& link) {
    const ComScope com;
    ComPtr<IShellLinkW> shellLink;
    HRESULT hr = MakeShellLink(shellLink);
    if (FAILED(hr)) {
        return ComFailure("the shell's link object cannot be made", hr);
    }
    if (!link.target.empty()) {
        shellLink->SetPath(Wide(link.target).c_str());
    }
    if (!link.workingDir.empty()) {
        shellLink->SetWorkingDirectory(Wide(link.workingDir).c_str());
    }
    if (!link.arguments.empty()) {
        shellLink->SetArguments(Wide(link.arguments).c_str());
    }
    if (!link.iconFile.empty()) {
        shellLink->SetIconLocation(Wide(link.iconFile).c_str(), link.iconIndex);
    }
    ComPtr<IPersistFile> persist;
    hr = shellLink->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(persist.Out()));
    if (SUCCEEDED(hr)) {
        hr = persist->Save(file.wstring().c_str(), TRUE);
    }
    if (FAILED(hr)) {
        return ComFailure("cannot save the link " + file.string(), hr);
    }
    return {};
}

Result<ShellLink> LoadSystemShellLink(const std::filesystem::path& file) {
    const ComScope com;
    ComPtr<IShellLinkW> shellLink;
    HRESULT hr = MakeShellLink(shellLink);
    if (FAILED(hr)) {
        return ComFailure("the shell's link object cannot be made", hr);
    }
    ComPtr<IPersistFile> persist;
    hr = shellLink->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(persist.Out()));
    if (SUCCEEDED(hr)) {
        hr = persist->Load(file.wstring().c_str(), STGM_READ);
    }
    if (FAILED(hr)) {
        return ComFailure("cannot load the link " + file.string(), hr);
    }
    std::array<wchar_t, 32768> buffer{};
    ShellLink link;
    if (shellLink->GetPath(buffer.data(), static_cast<int>(buffer.size()), nullptr, SLGP_RAWPATH) == S_OK) {
        link.target = Narrow(buffer.data());
    }
    buffer[0] = 0;
    if (SUCCEEDED(shellLink->GetWorkingDirectory(buffer.data(), static_cast<int>(buffer.size())))) {
        link.workingDir = Narrow(buffer.data());
    }
    buffer[0] = 0;
    if (SUCCEEDED(shellLink->GetArguments(buffer.data(), static_cast<int>(buffer.size())))) {
        link.arguments = Narrow(buffer.data());
    }
    buffer[0] = 0;
    int index = 0;
    if (SUCCEEDED(shellLink->GetIconLocation(buffer.data(), static_cast<int>(buffer.size()), &index))) {
        link.iconFile = Narrow(buffer.data());
        link.iconIndex = index;
    }
    return link;
}

}  // namespace glyphmoor
