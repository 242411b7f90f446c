// The steps of every operation as the engine walks them: on which replies, to which step, with which words.
#include "FTPOperations.h"
#include "GoldenFile.h"

namespace {

QString quoted(FTPText text) {
    return u'"' + QStringView(text).toString() + u'"';
}

QString told(const FTPCodes& codes) {
    QStringList accepted;
    for (int code = 100; code < 1000; ++code)
        if (codes.accepts(code))
            accepted += QString::number(code);
    return accepted.size() < 10 ? accepted.join(u' ') : QStringLiteral("%1 codes").arg(accepted.size());
}

QString told(const FTPStepRow& row) {
    return QStringList{QStringLiteral("   "),    quoted(row.step),
                       told(row.codes),          row.test ? "tested" : "",
                       row.action ? "acts" : "", QString::number(static_cast<int>(row.outcome)),
                       quoted(row.next),         quoted(row.command),
                       quoted(row.status),       row.after ? "acts" : ""}
        .join(u' ');
}

TEST(StepTables, AreWalkedAsTheyWere) {
    QStringList seen;
    for (const FTPOperation& operation : FTPOperations) {
        seen += QStringList{quoted(operation.type),
                            quoted(operation.firstCommand),
                            quoted(operation.status),
                            quoted(operation.success),
                            operation.isSuccessfulMessage ? "well" : "",
                            operation.table.gate == FTPGate::A ? "A" : "B",
                            operation.table.ignoresUnknownStep ? "lenient" : ""}
                    .join(u' ');
        for (const FTPStepRow& row : operation.table.rows)
            seen += told(row);
    }
    compareWithGolden(QStringLiteral(VLX_FTP_GOLDENS "/step_tables.txt"), seen.join(u'\n').toUtf8() + '\n');
}

}  // namespace
