// What the rows of the directory walks test and do.
#pragma once

class FTPEngine;

namespace FTPWalkActions {

// Down: finds the entry of the current directory. A miss is an internal fault, shown in a box; the walk goes
// on.
bool lookUpCurrentDirectory(FTPEngine& engine);
bool hasFile(const FTPEngine& engine);
bool takeFileToGet(FTPEngine& engine);
bool takeFileToDelete(FTPEngine& engine);
// Makes the next subdirectory the current one, or names none.
bool takeSubDirectory(FTPEngine& engine);
// The same, with its local folder.
bool takeSubDirectoryWithFolder(FTPEngine& engine);
bool hasNoSubDirectory(const FTPEngine& engine);
bool expectList(FTPEngine& engine);
bool makeTopFolder(FTPEngine& engine);

// Up.
bool hasParent(const FTPEngine& engine);
bool forgetLeftDirectory(FTPEngine& engine);
bool returnToParentFolder(FTPEngine& engine);

// Uploads.
bool flattenTree(FTPEngine& engine);
bool takeEntry(FTPEngine& engine);
bool isBehindLastEntry(const FTPEngine& engine);
bool isUpEntry(const FTPEngine& engine);
bool isFolderEntry(const FTPEngine& engine);
bool takeFolderName(FTPEngine& engine);
bool notePassivePort(FTPEngine& engine);
bool openEntry(FTPEngine& engine);
bool nextEntry(FTPEngine& engine);
bool nextEntryAndPort(FTPEngine& engine);
bool hasMoreEntries(const FTPEngine& engine);

}  // namespace FTPWalkActions
