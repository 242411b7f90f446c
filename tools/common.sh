# Sourced by the other scripts: the root of the project as the working folder, and what they share.
# shellcheck shell=bash
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# A build that was made before costs little with a compiler cache, if there is one.
if command -v ccache >/dev/null; then
    export CMAKE_CXX_COMPILER_LAUNCHER=ccache
fi

# FTP servers for the tests, of the system or unpacked by tools/setup --test, and the symbolizer that makes
# the sanitizers' reports readable.
servers=$PWD/build/ftp-servers
export PATH="$PATH:/usr/sbin:$servers/usr/sbin:/usr/lib/llvm-19/bin"
