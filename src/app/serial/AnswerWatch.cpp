#include "AnswerWatch.h"

void AnswerWatch::asked() {
    if (m_unanswered++ == 0)
        m_since = m_clock.now();
}

void AnswerWatch::came() {
    m_unanswered = 0;
    if (!m_isDim)
        return;
    m_isDim = false;
    m_panel.setDim(false);
    m_globals.showStatus(QString());
}

void AnswerWatch::look() {
    if (const auto seconds = silence())
        dim(QStringLiteral("No answer from the amplifier for %1 s").arg(seconds->count()));
}

std::optional<std::chrono::seconds> AnswerWatch::silence() const {
    if (m_unanswered < PatienceInPolls)
        return std::nullopt;
    return std::chrono::duration_cast<std::chrono::seconds>(m_clock.now() - m_since);
}

void AnswerWatch::lost() {
    dim(QStringLiteral("Port disconnected"));
}

void AnswerWatch::dim(const QString& reason) {
    if (!m_isDim)
        m_panel.setDim(true);
    m_isDim = true;
    m_globals.showStatus(reason);
}
