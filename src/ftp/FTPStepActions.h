// What the rows of the step tables test and do besides sending a command.
#pragma once

class FTPEngine;

namespace FTPStepActions {

// Tests.
bool isFTPS(const FTPEngine& engine);
bool isPassive(const FTPEngine& engine);
bool hasServerDirectory(const FTPEngine& engine);
bool hasMoreFiles(const FTPEngine& engine);
bool isDataPending(const FTPEngine& engine);
bool tellsAbort(const FTPEngine& engine);
// The four forms of a listing command; the plain LIST needs no test.
bool listsAllNames(const FTPEngine& engine);
bool listsNames(const FTPEngine& engine);
bool listsAll(const FTPEngine& engine);

// Control connection.
void noteMicrosoft(FTPEngine& engine);
void secureConnection(FTPEngine& engine);
void takeName(FTPEngine& engine);
void takeNameForData(FTPEngine& engine);
void storeWorkingDirectory(FTPEngine& engine);
void readRestOfReplies(FTPEngine& engine);

// Data connection.
void CalcSetPassivePort(FTPEngine& engine);
void takeNameAndConnect(FTPEngine& engine);
void setPort(FTPEngine& engine);
void setPortAndTakeName(FTPEngine& engine);
void listen(FTPEngine& engine);
void listenAndTakeName(FTPEngine& engine);
void pollData(FTPEngine& engine);
void NextDataPort(FTPEngine& engine);
void openNamedFile(FTPEngine& engine);
void takeSizeAsOffset(FTPEngine& engine);

}  // namespace FTPStepActions
