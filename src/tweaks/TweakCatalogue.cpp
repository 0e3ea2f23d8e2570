#include "tweaks/TweakCatalogue.h"

#include <array>
#include <utility>

namespace glyphmoor {

const TweakRow* FindTweakRow(std::string_view key) {
    for (const TweakRow& row : TweakRows()) {
        if (row.key == key) {
            return &row;
        }
    }
    return nullptr;
}

std::string ExpandTweakText(std::string_view text, const AppEnvironment& app) {
    const bool nt = app.windowsFlavour == "WinNT";
    const std::string prompt =
        nt ? app.sysDir + "\\cmd.exe /k cd \"%1\"" : app.winDir + "\\command.com /k cd \"%1\"";
    const std::array<std::pair<std::string_view, std::string>, 4> tokens = {{
        {"{program}", app.machine.ProgramDirectory()},
        {"{system}", app.sysDir},
        {"{prompt}", prompt},
        {"{smoothing}", nt ? "2" : "1"},
    }};
    std::string out;
    std::size_t i = 0;
    while (i < text.size()) {
        bool replaced = false;
        for (const auto& [token, value] : tokens) {
            if (text.substr(i, token.size()) == token) {
                out += value;
                i += token.size();
                replaced = true;
                break;
            }
        }
        if (!replaced) {
            out += text[i++];
        }
    }
    return out;
}

}  // namespace glyphmoor
