#pragma once

#include "Tools/Arguments.hpp"
#include "Tools/Output.hpp"

namespace corvanta {

// The commands of corvanta-text, each in a file of its own. Every one answers the program's exit status and
// throws `UsageError` or `Failure`.

int runComment(const Arguments& arguments, Output& output);
int runDecode(const Arguments& arguments, Output& output);
int runFormat(const Arguments& arguments, Output& output);
int runHighlight(const Arguments& arguments, Output& output);
int runIndent(const Arguments& arguments, Output& output);
int runLinks(const Arguments& arguments, Output& output);
int runMerge(const Arguments& arguments, Output& output);
int runNewer(const Arguments& arguments, Output& output);
int runSite(const Arguments& arguments, Output& output);
int runTokens(const Arguments& arguments, Output& output);

} // namespace corvanta
