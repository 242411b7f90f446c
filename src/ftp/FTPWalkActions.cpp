#include "FTPWalkActions.h"

#include "FTPSessionClass.h"
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

void takeFile(FTPEngine& engine) {
    FTPDirectoryClass* entry = currentEntry(engine);
    engine.directory = entry->GetName();
    engine.name = entry->GetNextFileName();
    entry->DeleteFile(engine.name);
}

// An entry of Files that stands for a folder. A file of the disk may be called "*a" too; it has a path.
bool isMarker(const FTPEngine& engine) {
    return engine.name.startsWith(u'*') &&
           engine.session.Paths.value(engine.session.CurrentFileIndex) == u"Ignore";
}

}  // namespace

void FTPWalkActions::lookUpCurrentDirectory(FTPEngine& engine) {
    FTPSessionClass& session = engine.session;
    session.CurrentDirectoryIndex = session.GetCurrentDirectoryIndex(session.CurrentWorkingDirectory);
    if (session.CurrentDirectoryIndex >= 0)
        return;
    const bool isDelete = session.FTPSessionType.startsWith(u"DeleteDir");
    const QString step = isDelete ? QString() : session.CurrentFTPStep + u' ';
    session.warn(step + QStringLiteral("oops ") + session.CurrentWorkingDirectory);
}

bool FTPWalkActions::hasFile(const FTPEngine& engine) {
    const FTPDirectoryClass* entry = currentEntry(engine);
    return entry && entry->GetFileCount() >= 0;
}

void FTPWalkActions::takeFileToGet(FTPEngine& engine) {
    takeFile(engine);
    FTPStepActions::openNamedFile(engine);
}

void FTPWalkActions::takeFileToDelete(FTPEngine& engine) {
    takeFile(engine);
}

void FTPWalkActions::takeSubDirectory(FTPEngine& engine) {
    FTPDirectoryClass* entry = currentEntry(engine);
    engine.directory = entry ? entry->GetNextSubDirectoryName() : QString();
    if (!engine.directory.isEmpty())
        engine.session.CurrentDirectoryIndex = engine.session.GetCurrentDirectoryIndex(engine.directory);
}

void FTPWalkActions::takeSubDirectoryWithFolder(FTPEngine& engine) {
    takeSubDirectory(engine);
    if (!engine.directory.isEmpty())
        engine.session.MakeLocalFolder(engine.directory);
}

bool FTPWalkActions::hasNoSubDirectory(const FTPEngine& engine) {
    return engine.directory.isEmpty();
}

void FTPWalkActions::expectList(FTPEngine& engine) {
    if (engine.session.DataSocket)
        engine.session.DataSocket->SetFileList();
    FTPStepActions::storeWorkingDirectory(engine);
}

void FTPWalkActions::makeTopFolder(FTPEngine& engine) {
    engine.session.MakeTopFolder();
}

bool FTPWalkActions::hasParent(const FTPEngine& engine) {
    return parentEntry(engine) != nullptr;
}

void FTPWalkActions::forgetLeftDirectory(FTPEngine& engine) {
    engine.directory = engine.session.CurrentWorkingDirectory;
    parentEntry(engine)->DeleteSubDirectory(engine.directory);
}

void FTPWalkActions::returnToParentFolder(FTPEngine& engine) {
    FTPStepActions::storeWorkingDirectory(engine);
    engine.session.LeaveLocalFolder();
}

void FTPWalkActions::flattenTree(FTPEngine& engine) {
    FTPSessionClass& session = engine.session;
    session.Files.clear();
    session.Paths.clear();
    session.GetFiles(QString(), session.LocalDirectory);
    session.FileCount = session.GetFileCount();
    // Behind the first entry, the top folder itself.
    session.CurrentFileIndex = 1;
}

void FTPWalkActions::takeEntry(FTPEngine& engine) {
    engine.name = engine.session.Files.value(engine.session.CurrentFileIndex);
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

void FTPWalkActions::takeFolderName(FTPEngine& engine) {
    engine.name.remove(0, 1);
}

void FTPWalkActions::notePassivePort(FTPEngine& engine) {
    engine.session.PassivePort = engine.session.CalculatePassivePort(engine.line);
    if (engine.session.PassivePort == 0)
        engine.refuse();
}

void FTPWalkActions::openEntry(FTPEngine& engine) {
    FTPStepActions::openNamedFile(engine);
    if (engine.session.PassiveMode)
        engine.session.SetPassivePort(engine.session.PassivePort);
}

void FTPWalkActions::nextEntry(FTPEngine& engine) {
    ++engine.session.CurrentFileIndex;
}

void FTPWalkActions::nextEntryAndPort(FTPEngine& engine) {
    nextEntry(engine);
    engine.session.NextDataPort();
}

bool FTPWalkActions::hasMoreEntries(const FTPEngine& engine) {
    return engine.session.CurrentFileIndex <= engine.session.FileCount;
}
