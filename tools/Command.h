#pragma once

#include "Arguments.h"

namespace voro {

/** The program's exit status. */
enum ExitStatus { Success = 0, Failure = 1, Unusable = 2 };

/** One command of the program; main() finds it by its name and runs it with a QCoreApplication in place. */
struct Command {
    CommandHelp help;
    ExitStatus (*run)(const Arguments &arguments);
};

extern const Command CompletionCommand;
extern const Command DemoCommand;
extern const Command DoctorCommand;
extern const Command InfoCommand;
extern const Command KeysCommand;
extern const Command PlayCommand;
extern const Command PpsCommand;
extern const Command PublishCommand;
extern const Command RecordCommand;
extern const Command RemoteCommand;
extern const Command SoundCommand;

/** All of them, in the order in which help shows them. */
std::vector<const Command *> allCommands();

} // namespace voro
