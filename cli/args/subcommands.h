// The subcommands: each is defined in the subcommand.cpp of its folder.
#ifndef CLI_ARGS_SUBCOMMANDS_H
#define CLI_ARGS_SUBCOMMANDS_H

#include "args/subcommand.h"

namespace cli {

#define SUBCOMMAND(name) extern const Subcommand name##_subcommand;
#include "args/subcommands.inc"
#undef SUBCOMMAND

}  // namespace cli

#endif
