#include "FTPOperations.h"
#include "FTPSharedSteps.h"
#include "FTPStepCheck.h"

using namespace FTPSteps;
using namespace FTPStepActions;

// clang-format off
namespace {

constexpr auto LogonRows = rows(
    logon(on(u"CONNECT", 220, 530), on(u"USER", 331)),
    on(u"PASS", 230).done());

constexpr auto LogoffRows = rows(
    onAny(u"QUIT").run(readRestOfReplies).end());

}  // namespace

constinit const FTPStepTable ExecuteLogonSteps = checkedTable<FTPGate::B, LogonRows>(true);
constinit const FTPStepTable ExecuteLogoffSteps = checkedTable<FTPGate::B, LogoffRows>();
// clang-format on
