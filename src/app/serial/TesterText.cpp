#include "TesterText.h"

#include "Text.h"

QString spellOut(const QByteArray& received) {
    QString text;
    text.reserve(received.size());
    for (const char byte : received) {
        const auto value = static_cast<unsigned char>(byte);
        if (value < 32 || value > 126)
            text += QStringLiteral("\\x") + Text::Hex(value);
        else
            text += QLatin1Char(byte);
    }
    return text;
}
