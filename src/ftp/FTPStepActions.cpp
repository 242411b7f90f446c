#include "FTPStepActions.h"

#include "FTPSessionClass.h"
#include "Text.h"

bool FTPStepActions::isFTPS(const FTPEngine& engine) {
    return engine.session.FTPS;
}

bool FTPStepActions::isPassive(const FTPEngine& engine) {
    return engine.session.PassiveMode;
}

bool FTPStepActions::hasServerDirectory(const FTPEngine& engine) {
    return !engine.session.ServerDirectory.isEmpty();
}

bool FTPStepActions::hasMoreFiles(const FTPEngine& engine) {
    return engine.session.GetFileCount() >= 0;
}

bool FTPStepActions::isDataPending(const FTPEngine& engine) {
    return engine.session.DataSocket && !engine.session.DataSocket->FileData.isEmpty();
}

bool FTPStepActions::tellsAbort(const FTPEngine& engine) {
    return Text::InStr(engine.line, u"Abort") > 0;
}

bool FTPStepActions::listsAllNames(const FTPEngine& engine) {
    return engine.session.UseNameList && engine.session.ShowInvisible;
}

bool FTPStepActions::listsNames(const FTPEngine& engine) {
    return engine.session.UseNameList;
}

bool FTPStepActions::listsAll(const FTPEngine& engine) {
    return engine.session.ShowInvisible;
}

void FTPStepActions::noteMicrosoft(FTPEngine& engine) {
    if (Text::InStr(engine.line, u"Microsoft") > 0)
        engine.session.NT = true;
}

void FTPStepActions::secureConnection(FTPEngine& engine) {
    // Nothing that came in the clear behind the reply may pass for an answer under encryption.
    engine.session.Buffer.clear();
    if (engine.session.CommandSocket)
        engine.session.CommandSocket->StartEncryption();
}

void FTPStepActions::takeName(FTPEngine& engine) {
    engine.name = engine.session.GetNextFileName();
}

void FTPStepActions::takeNameForData(FTPEngine& engine) {
    takeName(engine);
    openNamedFile(engine);
}

void FTPStepActions::storeWorkingDirectory(FTPEngine& engine) {
    engine.session.CurrentWorkingDirectory = Text::NthField(engine.line, u"\"", 2);
}

void FTPStepActions::readRestOfReplies(FTPEngine& engine) {
    if (engine.session.CommandSocket)
        engine.session.Buffer += engine.session.CommandSocket->ReadAll();
}

void FTPStepActions::CalcSetPassivePort(FTPEngine& engine) {
    engine.session.CalcSetPassivePort(engine.line);
}

void FTPStepActions::takeNameAndConnect(FTPEngine& engine) {
    takeNameForData(engine);
    CalcSetPassivePort(engine);
}

void FTPStepActions::setPort(FTPEngine& engine) {
    if (engine.session.DataSocket)
        engine.session.DataSocket->Port = static_cast<quint16>(engine.session.DataPort);
}

void FTPStepActions::setPortAndTakeName(FTPEngine& engine) {
    setPort(engine);
    takeNameForData(engine);
}

void FTPStepActions::listen(FTPEngine& engine) {
    if (engine.session.DataSocket)
        engine.session.DataSocket->ListenForServer();
}

void FTPStepActions::listenAndTakeName(FTPEngine& engine) {
    listen(engine);
    takeNameForData(engine);
}

void FTPStepActions::pollData(FTPEngine& engine) {
    if (engine.session.DataSocket)
        engine.session.DataSocket->Poll();
}

void FTPStepActions::NextDataPort(FTPEngine& engine) {
    engine.session.NextDataPort();
}

void FTPStepActions::openNamedFile(FTPEngine& engine) {
    if (engine.session.DataSocket)
        engine.session.DataSocket->PutFileName(engine.name);
}

void FTPStepActions::takeSizeAsOffset(FTPEngine& engine) {
    if (Text::CountFields(engine.line, u" ") == 2)
        engine.session.RestartByteCount = Text::IntVal(Text::NthField(engine.line, u" ", 2));
    if (engine.session.DataSocket)
        engine.session.DataSocket->SetRestartPosition();
}
