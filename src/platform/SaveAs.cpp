#include "SaveAs.h"

#include <QDir>

#include "FileWriter.h"

Task<> saveAs(Dialogs& dialogs, SaveFileRequest request, QByteArray contents) {
    const QString path = co_await dialogs.saveFile(request);
    if (path.isEmpty())
        co_return;
    QString failure;
    if (!writeFile(path, contents, failure))
        co_await dialogs.MsgBox(failure);
}

Task<> saveLog(Dialogs& dialogs, const Clock& clock, const QString& text) {
    const QString time = clock.wallClock().toString(QStringLiteral("yyyy-MM-dd HHmm"));
    return saveAs(dialogs,
                  {.title = QStringLiteral("Save the log"),
                   .prompt = {},
                   .initialFolder = QDir::homePath(),
                   .suggestedName = QStringLiteral("VLX Log %1.txt").arg(time),
                   .type = {QStringLiteral("Text"), QStringLiteral(".txt")}},
                  text.toUtf8());
}
