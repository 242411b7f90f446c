// Dialogs that a test answers beforehand and reads afterwards.
#pragma once

#include <deque>

#include <QStringList>

#include "Clock.h"
#include "Dialogs.h"

// Each dialog is recorded in `shown`, takes a millisecond of the clock as a user would take seconds, and
// gives the next answer of its kind; without one it is cancelled or takes the action button.
class ScriptedDialogs final : public Dialogs {
public:
    explicit ScriptedDialogs(Clock& clock) : m_clock(clock) {}

    void Beep() override { ++beeps; }

    Task<> MsgBox(QString text) override {
        shown += text;
        co_await m_clock.sleep(UserTime);
    }

    Task<bool> askCaution(MessageRequest request) override {
        shown += request.message + u'\n' + request.explanation;
        co_await m_clock.sleep(UserTime);
        co_return next(cautionAnswers, true);
    }

    Task<QString> saveFile(SaveFileRequest request) override {
        saveRequests.push_back(request);
        co_await m_clock.sleep(UserTime);
        co_return next(files, QString());
    }

    Task<QString> openFile(OpenFileRequest request) override {
        openRequests.push_back(request);
        co_await m_clock.sleep(UserTime);
        co_return next(files, QString());
    }

    Task<QString> selectFolder(SelectFolderRequest request) override {
        folderRequests.push_back(request);
        co_await m_clock.sleep(UserTime);
        co_return next(files, QString());
    }

    QStringList shown;
    int beeps = 0;
    std::deque<QString> files;
    std::deque<bool> cautionAnswers;
    std::vector<SaveFileRequest> saveRequests;
    std::vector<OpenFileRequest> openRequests;
    std::vector<SelectFolderRequest> folderRequests;

private:
    static constexpr Clock::Microseconds UserTime{1000};

    template <typename T>
    static T next(std::deque<T>& answers, T otherwise) {
        if (answers.empty())
            return otherwise;
        T answer = std::move(answers.front());
        answers.pop_front();
        return answer;
    }

    Clock& m_clock;
};
