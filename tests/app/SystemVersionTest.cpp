#include "SystemVersion.h"

#include <gtest/gtest.h>
#include <array>

namespace {

TEST(SystemVersionTest, LineHasItsFormOnEverySystem) {
    const std::array<const char*, 4> cases[] = {
        {{"Debian GNU/Linux 12 (bookworm)", "debian", "12", "Debian GNU/Linux Version 12 (bookworm)"}},
        {{"Ubuntu 24.04.1 LTS", "ubuntu", "24.04", "ubuntu Version 24.04 ()"}},
        {{"macOS Ventura (13.2)", "macos", "13.2", "macOS Version 13.2 (Ventura)"}},
        {{"Windows 11 Version 23H2", "windows", "11", "windows Version 11 ()"}},
        {{"", "unknown", "", "unknown Version  ()"}},
    };
    for (const auto& [prettyName, type, version, line] : cases)
        EXPECT_EQ(systemVersionLine(QString::fromLatin1(prettyName), QString::fromLatin1(type),
                                    QString::fromLatin1(version)),
                  QString::fromLatin1(line));
}

}  // namespace
