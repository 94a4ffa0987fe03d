#pragma once

#include "Accounts.h"
#include "Content.h"

#include <pps/Path.h>
#include <pps/Wire.h>

#include <list>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace voro::pps {

struct Subscriber;
class Client;
/** A text that clients are given to keep, as in Reply; null for none. Who has one that is shared has the same one. */
struct KeptText {
    std::string text;
    uint64_t shownBy = 0;
    /** Its cost. */
    Accounts::Charge charge;
};
using Kept = std::shared_ptr<const KeptText>;
struct Folder;

struct Object {
    struct Fence {
        uint64_t version;
        std::shared_ptr<const Content> content;
    };

    Folder *folder;
    std::string name;
    uint64_t id;
    Content content;
    std::vector<Fence> fences;
    std::vector<Subscriber *> subscribers;
    /** The place in Folder::byVersion, which holds every object that was ever written. */
    std::list<Object *>::iterator place;
    /** Its cost, charged to the process that wrote it last; not valid for one that was never written. */
    Accounts::Charge charge;
    /** The place among the objects of that process, or among those that were left behind. */
    std::list<Object *>::iterator placeOfOwner;
};

struct Folder {
    std::string path;
    std::map<std::string, std::unique_ptr<Object>, std::less<>> objects;
    /** Oldest write first, so that what changed since a version is at the end. */
    std::list<Object *> byVersion;
    std::vector<Subscriber *> subscribers;
    /** How many of the objects are only remembered as deleted. */
    size_t deleted = 0;
    Kept will;
    /** Up to this version it holds what the will of an earlier folder said. */
    uint64_t returned = 0;
};

/** The subscription of one reader. */
struct Subscriber {
    Client *client = nullptr;
    Folder *folder = nullptr;
    /** Null for `.all`. */
    Object *object = nullptr;
    Selection selection;
    /** Whether the reader has read the will of an earlier folder. */
    bool knowsWill = false;
};

/** A reader's position with the objects of which it has seen less. */
struct ReaderPosition {
    Position position;
    std::vector<Held> held;
    /** Whether nothing of a read is left over. */
    bool isSettled() const { return position.base == position.reached && held.empty(); }
};

/**
 * Every plain object and the versions of its changes. It knows no sockets and keeps nothing per reader: it computes
 * the news for a reader from the reader's position.
 */
class Store {
public:
    explicit Store(Accounts &accounts) : m_accounts(accounts) {}

    /**
     * Writes a message on the object at the path, on the account of a process. The text must be writable there. False
     * when the object would grow beyond a bound, or the process cannot have so much. `object` is the one whose readers
     * have to be notified, or null.
     */
    bool publish(const ObjectPath &path, std::string_view text, bool fence, pid_t writer, Object *&object);
    /** Deletes the object at the path and all in the folder of that name and below; returns those that were there. */
    std::vector<Object *> remove(const ObjectPath &path);
    /** The object's whole text, empty when there is none. */
    std::string content(const ObjectPath &path) const;

    void setWill(const std::string &folder, Kept will);
    /** Between the two, writes in the folder are no news for readers of the will. */
    void beginReturn(const std::string &path) { folder(path).returned = UINT64_MAX; }
    void endReturn(const std::string &path) { folder(path).returned = m_version; }

    /** The process has gone; its objects stay until the room is needed. */
    void leave(pid_t process);
    /** Deletes the oldest object that was left behind; false when there is none. `object` as for publish(). */
    bool removeOldestLeft(Object *&object);

    /** Fills the subscriber in and counts it. */
    void subscribe(const ObjectPath &path, Subscriber &subscriber);
    void unsubscribe(Subscriber &subscriber);
    /** The text of what the reader has not seen, at most MaximumMessage of it; moves the position accordingly. */
    std::string read(const Subscriber &subscriber, ReaderPosition &position) const;
    /** The paths of all objects below a folder. */
    std::vector<std::string> pathsBelow(const std::string &folder) const;

    uint64_t version() const { return m_version; }

private:
    Folder &folder(const std::string &path);
    Object *find(const ObjectPath &path) const;
    Object &findOrAdd(const ObjectPath &path);
    bool write(Object &object, std::string_view text, bool replace, pid_t writer);
    bool charge(Object &object, pid_t writer);
    void updateCharge(Object &object);
    void disown(Object &object);
    void markDeleted(Object &object);
    void moveToEnd(Object &object);
    void addFence(Object &object);
    bool forgetUnneeded(Object &object);
    void forgetOldest(Folder &folder);
    void erase(Object &object);
    std::string readObject(const Subscriber &subscriber, ReaderPosition &position) const;
    std::string readFolder(const Subscriber &subscriber, ReaderPosition &position) const;

    Accounts &m_accounts;
    std::map<std::string, std::unique_ptr<Folder>, std::less<>> m_folders;
    /** The written objects of the processes that are there, and those that others left behind; oldest first. */
    std::unordered_map<pid_t, std::list<Object *>> m_owned;
    std::list<Object *> m_left;
    std::unordered_map<uint64_t, Object *> m_byId;
    uint64_t m_version = 1;
    uint64_t m_lastId = 0;
};

} // namespace voro::pps
