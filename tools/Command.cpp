#include "Command.h"

namespace voro {

std::vector<const Command *> allCommands()
{
    return {&PlayCommand,  &InfoCommand, &RecordCommand, &PublishCommand, &RemoteCommand,    &KeysCommand,
            &SoundCommand, &DemoCommand, &DoctorCommand, &PpsCommand,     &CompletionCommand};
}

} // namespace voro
