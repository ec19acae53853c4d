// Stand-in host: the messages the host raises on its own, through the kit's
// message handlers (hcKit::sendMsg).  Private to the stand-in.
//   error (0)        a file that cannot be read, parsed or written, a data
//                    path that is not a directory
//   warning (1)      an unknown unit word
//   information (2)  debugging reports
//   file (3)         every file read or written
#pragma once

#include <cstdio>
#include <string>

namespace hcmsg {

void error(const std::string &text);
void warning(const std::string &text);
void info(const std::string &text);

// fopen, reporting "read <path>" or "wrote <path>" as a file message when
// the file opens, and "cannot read <path>" / "cannot write <path>" as an
// error when it does not.
std::FILE *open(const char *path, const char *mode);

// Writes text as the whole of the file path (through open); true when all
// of it was written and the file closed cleanly.
bool writeText(const char *path, const std::string &text);

// After a reader refused a file: "cannot parse <path>" when the file is a
// readable regular file (otherwise open has already said why).
void unparsable(const char *path);

}  // namespace hcmsg
