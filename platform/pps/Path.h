#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace voro::pps {

/** A path under "/pps/" taken apart, with its options. */
struct ObjectPath {
    /** Everything in front of the name, without the last slash. */
    std::string folder;
    std::string name;
    bool wait = false;
    bool server = false;
    bool delta = false;
    /** The attributes that a read is limited to, each once; empty for all. */
    std::vector<std::string> filter;

    bool isService() const { return name == "control"; }
    /** Whether it stands for the changed objects of the folder. */
    bool isAll() const { return name == ".all"; }
    /** Whether it stands for the list of what the folder holds. */
    bool isListing() const { return name == ".list"; }
    std::string path() const { return folder + '/' + name; }
};

/**
 * False when the text is no path: not under "/pps/", a bad name in it, an unknown option or one that does not fit, more
 * than 32 attributes, or more than 1024 bytes in front of the options or of them.
 */
bool parsePath(std::string_view text, ObjectPath &path);

/** How an object is opened, as bits. */
enum OpenMode : unsigned { Publish = 1, Subscribe = 2, PublishSubscribe = 3 };

/** Whether the mode is one, and the object can be opened that way. */
bool isOpenable(const ObjectPath &path, unsigned mode);

/**
 * Whether the text may be written to the object: valid lines, at most one object line, that one in front and with the
 * object's name ("control.ID" as well for a server), and nothing after the deletion of an object.
 */
bool isWritable(const ObjectPath &path, std::string_view text);

} // namespace voro::pps
