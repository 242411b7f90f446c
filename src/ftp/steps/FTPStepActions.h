// What the rows of the step tables test and do besides sending a command.
#pragma once

class FTPEngine;

namespace FTPStepActions {

// Tests.
bool isFTPS(const FTPEngine& engine);
bool isPassive(const FTPEngine& engine);
bool hasServerDirectory(const FTPEngine& engine);
bool hasMoreFiles(const FTPEngine& engine);
// Whether the transfer has not yet ended: its data connection is open or awaited.
bool isDataPending(const FTPEngine& engine);
// Whether a server may have passed over the restart position.
bool isDataDoubtful(const FTPEngine& engine);
// Whether the server is reached by IPv6 and has not accepted EPSV.
bool refusesEPSV(const FTPEngine& engine);
bool tellsAbort(const FTPEngine& engine);
// The four forms of a listing command; the plain LIST needs no test.
bool listsAllNames(const FTPEngine& engine);
bool listsNames(const FTPEngine& engine);
bool listsAll(const FTPEngine& engine);

// Control connection.
bool noteMicrosoft(FTPEngine& engine);
bool secureConnection(FTPEngine& engine);
bool takeName(FTPEngine& engine);
bool takeNameForData(FTPEngine& engine);
bool storeWorkingDirectory(FTPEngine& engine);
bool readRestOfReplies(FTPEngine& engine);

// Data connection.
bool CalcSetPassivePort(FTPEngine& engine);
bool takeNameAndConnect(FTPEngine& engine);
bool setPort(FTPEngine& engine);
bool setPortAndTakeName(FTPEngine& engine);
bool listen(FTPEngine& engine);
bool listenAndTakeName(FTPEngine& engine);
bool endWithoutEPSV(FTPEngine& engine);
bool pollData(FTPEngine& engine);
// The server has accepted the transfer, whose length its reply may tell.
bool acceptData(FTPEngine& engine);
bool acceptListing(FTPEngine& engine);
bool abortData(FTPEngine& engine);
bool settleData(FTPEngine& engine);
bool NextDataPort(FTPEngine& engine);
bool openNamedFile(FTPEngine& engine);
bool takeSizeAsOffset(FTPEngine& engine);

}  // namespace FTPStepActions
