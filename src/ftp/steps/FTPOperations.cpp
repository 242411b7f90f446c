#include "FTPOperations.h"

#include "Text.h"

const FTPOperation* findOperation(QStringView type) {
    const auto found = std::ranges::find_if(
        FTPOperations, [&](const FTPOperation& operation) { return Text::equal(operation.type, type); });
    return found == FTPOperations.end() ? nullptr : &*found;
}
