// What the rows of the directory walks test and do.
#pragma once

class FTPEngine;

namespace FTPWalkActions {

// Down: finds the entry of the current directory. A miss is an internal fault, shown in a box; the walk goes
// on.
void lookUpCurrentDirectory(FTPEngine& engine);
bool hasFile(const FTPEngine& engine);
void takeFileToGet(FTPEngine& engine);
void takeFileToDelete(FTPEngine& engine);
// Makes the next subdirectory the current one, or names none.
void takeSubDirectory(FTPEngine& engine);
// The same, with its local folder.
void takeSubDirectoryWithFolder(FTPEngine& engine);
bool hasNoSubDirectory(const FTPEngine& engine);
void expectList(FTPEngine& engine);
void makeTopFolder(FTPEngine& engine);

// Up.
bool hasParent(const FTPEngine& engine);
void forgetLeftDirectory(FTPEngine& engine);
void returnToParentFolder(FTPEngine& engine);

// Uploads.
void flattenTree(FTPEngine& engine);
void takeEntry(FTPEngine& engine);
bool isBehindLastEntry(const FTPEngine& engine);
bool isUpEntry(const FTPEngine& engine);
bool isFolderEntry(const FTPEngine& engine);
void takeFolderName(FTPEngine& engine);
void notePassivePort(FTPEngine& engine);
void openEntry(FTPEngine& engine);
void nextEntry(FTPEngine& engine);
void nextEntryAndPort(FTPEngine& engine);
bool hasMoreEntries(const FTPEngine& engine);

}  // namespace FTPWalkActions
