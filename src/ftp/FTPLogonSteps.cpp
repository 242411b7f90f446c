#include "FTPSharedSteps.h"
#include "FTPStepTables.h"

using namespace FTPSteps;
using namespace FTPStepActions;

// clang-format off
namespace {

constexpr auto LogonRows = rows(
    logon(on(u"CONNECT", 220, 530), on(u"USER", 331)),
    on(u"PASS", 230).done(u"Connected to Tessarin server."));

constexpr auto LogoffRows = rows(
    onAny(u"QUIT").run(readRestOfReplies).end(u"Logoff Complete."));

}  // namespace

const FTPStepTable ExecuteLogonSteps  {FTPGate::B, LogonRows, true};
const FTPStepTable ExecuteLogoffSteps {FTPGate::B, LogoffRows};
// clang-format on
