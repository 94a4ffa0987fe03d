#pragma once

#include <multimedia/Export.h>

#include <QtCore/QObject>

namespace voro::multimedia {

/**
 * The result of a command of the player, the recorder or the now-playing classes. The numbers are the renderer's own
 * error codes; 6 and 15 to 31 are not used.
 */
class VOROMULTIMEDIA_EXPORT MediaError {
    Q_GADGET
public:
    enum Type : int {
        /** The command succeeded. */
        None = 0,
        /** The renderer failed internally, or the input is not of the type that was tried. */
        Internal = 1,
        /** A value is out of range or cannot be sent to the renderer. */
        InvalidParameter = 2,
        /** The present state does not allow the command, or there is no renderer context. */
        InvalidState = 3,
        /** The value is valid but not supported here. */
        UnsupportedValue = 4,
        /** There is no decoder or encoder for the medium. */
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
        /** A resource of the command is in use or missing. */
        ResourceUnavailable = 14,
        /** The process lacks the permission. */
        Permission = 32,
        /** A command of the renderer failed. Where the cause is known, its code is reported instead. */
        CommandFailed = 33,
    };
    Q_ENUM(Type)
};

} // namespace voro::multimedia
