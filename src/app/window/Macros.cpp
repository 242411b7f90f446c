#include "Macros.h"

#include "REALEasyPrefs.h"

namespace {

QString captionKey(int macro) {
    return QStringLiteral("Macro%1Button").arg(macro + 1);
}

QString commandKey(int macro) {
    return QStringLiteral("Macro%1Command").arg(macro + 1);
}

}  // namespace

void Macros::load(const REALEasyPrefs& prefs) {
    for (int macro = 0; macro < Count; ++macro) {
        const auto index = static_cast<std::size_t>(macro);
        mCommandMacroButtonText[index] =
            prefs.GetPrefString(captionKey(macro), QStringLiteral("Macro %1").arg(macro + 1));
        mCommandMacroCommandText[index] = prefs.GetPrefString(commandKey(macro), QString());
    }
}

void Macros::save(REALEasyPrefs& prefs) const {
    for (int macro = 0; macro < Count; ++macro)
        prefs.SetPrefString(captionKey(macro), mCommandMacroButtonText[static_cast<std::size_t>(macro)]);
    for (int macro = 0; macro < Count; ++macro)
        prefs.SetPrefString(commandKey(macro), mCommandMacroCommandText[static_cast<std::size_t>(macro)]);
}
