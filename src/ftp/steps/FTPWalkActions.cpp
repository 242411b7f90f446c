#include "FTPWalkActions.h"

#include "FTPDataSocket.h"
#include "FTPEngine.h"
#include "FTPStepActions.h"

namespace {

FTPDirectoryClass* entryOf(const FTPEngine& engine, const QString& path) {
    const std::int32_t index = engine.session.GetCurrentDirectoryIndex(path);
    return index < 0 ? nullptr : &engine.session.DirList[static_cast<std::size_t>(index)];
}

FTPDirectoryClass* currentEntry(const FTPEngine& engine) {
    return entryOf(engine, engine.session.CurrentWorkingDirectory);
}

FTPDirectoryClass* parentEntry(const FTPEngine& engine) {
    const FTPDirectoryClass* entry = currentEntry(engine);
    const QString parent = entry ? entry->GetParentDirectoryName() : QString();
    return parent.isEmpty() ? nullptr : entryOf(engine, parent);
}

bool takeFile(FTPEngine& engine) {
    FTPDirectoryClass* entry = currentEntry(engine);
    engine.directory = entry->GetName();
    engine.name = entry->GetNextFileName();
    entry->DeleteFile(engine.name);
    return true;
}

bool cannotWrite(FTPEngine& engine, const QString& serverPath) {
    return engine.end(QStringLiteral("Error writing local file: ") +
                      engine.session.GetFileFromPath(serverPath));
}

// An entry of Files that stands for a folder. A file of the disk may be called "*a" too; it has a path.
bool isMarker(const FTPEngine& engine) {
    return engine.name.startsWith(u'*') &&
           engine.session.Paths.value(engine.session.CurrentFileIndex) == u"Ignore";
}

}  // namespace

bool FTPWalkActions::lookUpCurrentDirectory(FTPEngine& engine) {
    FTPSessionState& session = engine.session;
    session.CurrentDirectoryIndex = session.GetCurrentDirectoryIndex(session.CurrentWorkingDirectory);
    if (session.CurrentDirectoryIndex >= 0)
        return true;
    const bool isDelete = session.FTPSessionType.startsWith(u"DeleteDir");
    const QString step = isDelete ? QString() : session.CurrentFTPStep + u' ';
    engine.warn(step + QStringLiteral("oops ") + session.CurrentWorkingDirectory);
    return true;
}

bool FTPWalkActions::hasFile(const FTPEngine& engine) {
    const FTPDirectoryClass* entry = currentEntry(engine);
    return entry && entry->GetFileCount() >= 0;
}

bool FTPWalkActions::takeFileToGet(FTPEngine& engine) {
    return takeFile(engine) && FTPStepActions::openNamedFile(engine);
}

bool FTPWalkActions::takeFileToDelete(FTPEngine& engine) {
    return takeFile(engine);
}

bool FTPWalkActions::takeSubDirectory(FTPEngine& engine) {
    FTPDirectoryClass* entry = currentEntry(engine);
    engine.directory = entry ? entry->GetNextSubDirectoryName() : QString();
    if (!engine.directory.isEmpty())
        engine.session.CurrentDirectoryIndex = engine.session.GetCurrentDirectoryIndex(engine.directory);
    return true;
}

bool FTPWalkActions::takeSubDirectoryWithFolder(FTPEngine& engine) {
    takeSubDirectory(engine);
    return engine.directory.isEmpty() || engine.session.MakeLocalFolder(engine.directory) ||
           cannotWrite(engine, engine.directory);
}

bool FTPWalkActions::hasNoSubDirectory(const FTPEngine& engine) {
    return engine.directory.isEmpty();
}

bool FTPWalkActions::expectList(FTPEngine& engine) {
    if (engine.session.DataSocket)
        engine.session.DataSocket->SetFileList();
    return FTPStepActions::storeWorkingDirectory(engine);
}

bool FTPWalkActions::makeTopFolder(FTPEngine& engine) {
    return engine.session.MakeTopFolder() || cannotWrite(engine, engine.session.ServerDirectory);
}

bool FTPWalkActions::hasParent(const FTPEngine& engine) {
    return parentEntry(engine) != nullptr;
}

bool FTPWalkActions::forgetLeftDirectory(FTPEngine& engine) {
    engine.directory = engine.session.CurrentWorkingDirectory;
    parentEntry(engine)->DeleteSubDirectory(engine.directory);
    return true;
}

bool FTPWalkActions::returnToParentFolder(FTPEngine& engine) {
    FTPStepActions::storeWorkingDirectory(engine);
    return engine.session.LeaveLocalFolder() ||
           engine.end(QStringLiteral("Error: The server has left the directory."));
}

bool FTPWalkActions::flattenTree(FTPEngine& engine) {
    FTPSessionState& session = engine.session;
    session.Files.clear();
    session.Paths.clear();
    session.Skipped.clear();
    if (!session.GetFiles(QString(), session.LocalDirectory))
        return engine.end(QStringLiteral("Cannot find this path: ") + session.LocalDirectory);
    for (const QString& skipped : std::as_const(session.Skipped))
        engine.tell(skipped);
    session.FileCount = session.GetFileCount();
    // Behind the first entry, the top folder itself.
    session.CurrentFileIndex = 1;
    return true;
}

bool FTPWalkActions::takeEntry(FTPEngine& engine) {
    engine.name = engine.session.Files.value(engine.session.CurrentFileIndex);
    return true;
}

bool FTPWalkActions::isBehindLastEntry(const FTPEngine& engine) {
    return !hasMoreEntries(engine);
}

bool FTPWalkActions::isUpEntry(const FTPEngine& engine) {
    return isMarker(engine) && engine.name == u"*UP";
}

bool FTPWalkActions::isFolderEntry(const FTPEngine& engine) {
    return isMarker(engine);
}

bool FTPWalkActions::takeFolderName(FTPEngine& engine) {
    engine.name.remove(0, 1);
    if (engine.name.endsWith(u'/'))
        engine.name.chop(1);
    return true;
}

bool FTPWalkActions::notePassivePort(FTPEngine& engine) {
    engine.session.PassivePort = engine.session.CalculatePassivePort(engine.line);
    return engine.session.PassivePort != 0 || engine.refuse();
}

bool FTPWalkActions::openEntry(FTPEngine& engine) {
    if (!FTPStepActions::openNamedFile(engine))
        return false;
    if (engine.session.PassiveMode)
        engine.session.SetPassivePort(engine.session.PassivePort);
    return true;
}

bool FTPWalkActions::nextEntry(FTPEngine& engine) {
    ++engine.session.CurrentFileIndex;
    return true;
}

bool FTPWalkActions::nextEntryAndPort(FTPEngine& engine) {
    engine.session.NextDataPort();
    return nextEntry(engine);
}

bool FTPWalkActions::hasMoreEntries(const FTPEngine& engine) {
    return engine.session.CurrentFileIndex <= engine.session.FileCount;
}
