// What each subcommand's file defines; subcommands.cpp has the table of them.
#ifndef VELTANE_CLI_SUBCOMMANDS_H
#define VELTANE_CLI_SUBCOMMANDS_H

namespace cli {

struct Invocation;

int design_command(const Invocation &invocation);
int plot_command(const Invocation &invocation);
int export_command(const Invocation &invocation);
int check_command(const Invocation &invocation);
int estimate_command(const Invocation &invocation);

}  // namespace cli

#endif
