#include "BannerValidator.h"

namespace {

bool isPrintableAscii(QChar c) {
    return c >= u' ' && c <= u'~';
}

}  // namespace

QValidator::State BannerValidator::validate(QString& input, int& /*position*/) const {
    if (input == m_originalText)
        return Acceptable;
    for (QChar& c : input) {
        if (isPrintableAscii(c))
            c = c.toUpper();
        else if (!m_originalText.contains(c))
            return Invalid;
    }
    return Acceptable;
}
