#pragma once

#include <multimedia/Export.h>

#include <QtCore/QObject>

namespace voro::multimedia {

/**
 * What a command of the player, the recorder or the now-playing classes results in. The numbers are the renderer's own
 * error codes; 6 and 15 to 31 are not used.
 */
class VOROMULTIMEDIA_EXPORT MediaError {
    Q_GADGET
public:
    enum Type : int {
        /** The command succeeded. */
        None = 0,
        /** The renderer failed for a reason of its own, or does not take the input as the type that was tried. */
        Internal = 1,
        /** A value is out of its range or cannot be handed to the renderer. */
        InvalidParameter = 2,
        /** The object cannot do that in its present state, or has no renderer context. */
        InvalidState = 3,
        /** The value exists but cannot be used here. */
        UnsupportedValue = 4,
        /** No decoder or encoder knows the medium. */
        UnsupportedMediaType = 5,
        /** The medium or the platform does not allow the operation. */
        UnsupportedOperation = 7,
        /** Reading the medium failed. */
        Read = 8,
        /** Writing the recording failed. */
        Write = 9,
        /** The source does not exist or does not answer. */
        SourceUnavailable = 10,
        /** The medium is damaged. */
        ResourceCorrupted = 11,
        /** The output device or file cannot be used. */
        OutputUnavailable = 12,
        /** There is not enough memory. */
        OutOfMemory = 13,
        /** Something that the command needs is in use or missing. */
        ResourceUnavailable = 14,
        /** The process may not do that. */
        Permission = 32,
        /** A command of the renderer failed; the code of that command is reported instead where it is known. */
        CommandFailed = 33,
    };
    Q_ENUM(Type)
};

} // namespace voro::multimedia
