// No desktop to open anything on: the command line and the tests never start a program.
#include "platform/ShellOpenBackend.h"

bool SystemShellOpen(const std::string& /*target*/, void* /*ownerWindow*/) noexcept { return false; }
