#include "SystemVersion.h"

#include <gtest/gtest.h>

namespace {

struct VersionCase {
    const char* prettyName;
    const char* type;
    const char* version;
    const char* line;
};

TEST(SystemVersionTest, LineHasItsFormOnEverySystem) {
    const std::vector<VersionCase> cases{
        {"Debian GNU/Linux 12 (bookworm)", "debian", "12", "Debian GNU/Linux Version 12 (bookworm)"},
        {"Ubuntu 24.04.1 LTS", "ubuntu", "24.04", "ubuntu Version 24.04 ()"},
        {"macOS Ventura (13.2)", "macos", "13.2", "macOS Version 13.2 (Ventura)"},
        {"Windows 11 Version 23H2", "windows", "11", "windows Version 11 ()"},
        {"", "unknown", "", "unknown Version  ()"},
    };
    for (const VersionCase& one : cases)
        EXPECT_EQ(systemVersionLine(QString::fromLatin1(one.prettyName), QString::fromLatin1(one.type),
                                    QString::fromLatin1(one.version)),
                  QString::fromLatin1(one.line));
}

}  // namespace
