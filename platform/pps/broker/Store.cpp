#include "Store.h"

#include <pps/Text.h>

#include <algorithm>

namespace voro::pps {

namespace {

/** An object of this size is within every bound, when its writer can have so much more. */
constexpr size_t HarmlessSize = 4096;
constexpr size_t HarmlessRoom = 1024 * 1024;
/** The cost of an object besides its content, with a folder of its own and its places in maps. */
constexpr size_t ObjectCost = sizeof(Object) + sizeof(Folder) + 512;
constexpr size_t MaximumFences = 8;
/** Deleted objects of a folder that readers can still learn of. */
constexpr size_t MaximumDeleted = 1024;

bool isWatched(const Object &object)
{
    return !object.subscribers.empty() || !object.folder->subscribers.empty();
}

bool wasWritten(const Object &object)
{
    return object.place != object.folder->byVersion.end();
}

size_t costOf(const Object &object)
{
    return ObjectCost + object.content.cost() + object.name.size() * 2 + object.folder->path.size() * 2;
}

// The version that a reader of one object has seen of it.
uint64_t seenVersion(const ReaderPosition &position)
{
    return position.held.empty() ? position.position.base : position.held.front().version;
}

// The mark of the object line in front of a text, 0 without one.
char objectMark(std::string_view text)
{
    LineReader reader(text);
    Line line;
    return reader.nextUnchecked(line) && line.kind == Line::Kind::Object ? line.mark : '\0';
}

// Appends what the reader has not seen of the object, up to its next fence.
void appendUpToFence(std::string &out, const Object &object, Position seen, const Selection &selection,
                     ReaderPosition &after)
{
    const Content *content = &object.content;
    if (seen.base != 0 && after.held.size() < MaximumHeld) {
        const auto fence = std::find_if(object.fences.begin(), object.fences.end(),
                                        [seen](const Object::Fence &f) { return f.version > seen.base; });
        if (fence != object.fences.end() && fence->version < object.content.version()) {
            content = fence->content.get();
            after.held.push_back({object.id, fence->version});
        }
    }
    // In the middle of its first long read a reader may have been given the object already.
    const uint64_t reported = seen.base != 0 ? seen.base : seen.reached;
    content->append(out, object.name, seen.base, reported, selection);
}

} // namespace

bool Store::publish(const ObjectPath &path, std::string_view text, bool fence, pid_t writer, Object *&object)
{
    object = nullptr;
    const char mark = objectMark(text);
    if (mark == '-') {
        Object *const found = find(path);
        if (found && found->content.exists()) {
            markDeleted(*found);
            forgetOldest(*found->folder);
            object = forgetUnneeded(*found) ? nullptr : found;
        }
        return true;
    }
    Object &target = findOrAdd(path);
    if (!write(target, text, mark == '*', writer)) {
        forgetUnneeded(target);
        return false;
    }
    moveToEnd(target);
    if (!forgetUnneeded(target)) {
        object = &target;
    }
    if (fence && isWatched(target)) {
        addFence(target);
    }
    return true;
}

bool Store::write(Object &object, std::string_view text, bool replace, pid_t writer)
{
    // A failure has to leave the object as it was; small changes cannot fail.
    const bool isRisky = object.content.size(object.name) + text.size() > HarmlessSize
                         || m_accounts.room(writer, Resource::Memory) < HarmlessRoom;
    Content backup = isRisky ? object.content : Content();
    const bool wasRemembered = wasWritten(object) && !object.content.exists();
    if (!object.content.apply(object.name, text, replace, m_version + 1) || !charge(object, writer)) {
        object.content = std::move(backup);
        return false;
    }
    ++m_version;
    object.folder->deleted -= wasRemembered;
    return true;
}

// Charges the object as it is now to a process, whoever had to stand for it before.
bool Store::charge(Object &object, pid_t writer)
{
    if (object.charge.isValid() && !object.charge.isLeft() && object.charge.process() == writer) {
        std::list<Object *> &owned = m_owned[writer];
        owned.splice(owned.end(), owned, object.placeOfOwner);
        return object.charge.resize(costOf(object));
    }
    Accounts::Charge charge = m_accounts.take(writer, Resource::Memory, costOf(object));
    if (!charge.isValid()) {
        return false;
    }
    disown(object);
    object.charge = std::move(charge);
    std::list<Object *> &owned = m_owned[writer];
    object.placeOfOwner = owned.insert(owned.end(), &object);
    return true;
}

void Store::updateCharge(Object &object)
{
    if (object.charge.isValid()) {
        object.charge.resize(costOf(object));
    }
}

void Store::disown(Object &object)
{
    if (object.charge.isLeft()) {
        m_left.erase(object.placeOfOwner);
    } else if (object.charge.isValid()) {
        const auto owner = m_owned.find(object.charge.process());
        owner->second.erase(object.placeOfOwner);
        if (owner->second.empty()) {
            m_owned.erase(owner);
        }
    }
    object.charge.release();
}

void Store::leave(pid_t process)
{
    if (auto owned = m_owned.extract(process)) {
        for (Object *object : owned.mapped()) {
            object->charge.leave();
        }
        m_left.splice(m_left.end(), owned.mapped());
    }
}

bool Store::removeOldestLeft(Object *&object)
{
    object = nullptr;
    if (m_left.empty()) {
        return false;
    }
    Object &oldest = *m_left.front();
    if (oldest.content.exists()) {
        m_left.splice(m_left.end(), m_left, oldest.placeOfOwner);
        markDeleted(oldest);
        forgetOldest(*oldest.folder);
        object = forgetUnneeded(oldest) ? nullptr : &oldest;
    } else if (oldest.subscribers.empty()) {
        erase(oldest);
    } else {
        // Its readers' connections are counted.
        disown(oldest);
    }
    return true;
}

std::vector<Object *> Store::remove(const ObjectPath &path)
{
    std::vector<Object *> found;
    if (Object *object = find(path)) {
        found.push_back(object);
    }
    const std::string folderPath = path.path();
    const std::string prefix = folderPath + '/';
    for (auto at = m_folders.lower_bound(folderPath); at != m_folders.end() && at->first.starts_with(folderPath);
         ++at) {
        if (at->first != folderPath && !at->first.starts_with(prefix)) {
            continue;
        }
        for (const auto &[name, object] : at->second->objects) {
            found.push_back(object.get());
        }
    }
    std::erase_if(found, [](const Object *object) { return !object->content.exists(); });
    std::erase_if(found, [this](Object *object) {
        markDeleted(*object);
        return forgetUnneeded(*object);
    });
    return found;
}

std::string Store::content(const ObjectPath &path) const
{
    std::string text;
    if (const Object *object = find(path)) {
        object->content.append(text, object->name, 0, 0, {});
    }
    return text;
}

void Store::setWill(const std::string &path, Kept will)
{
    if (will || m_folders.contains(path)) {
        folder(path).will = std::move(will);
    }
}

void Store::subscribe(const ObjectPath &path, Subscriber &subscriber)
{
    subscriber.selection = {path.delta, path.filter};
    if (path.isAll()) {
        subscriber.folder = &folder(path.folder);
        subscriber.folder->subscribers.push_back(&subscriber);
        return;
    }
    subscriber.object = &findOrAdd(path);
    subscriber.folder = subscriber.object->folder;
    subscriber.object->subscribers.push_back(&subscriber);
}

void Store::unsubscribe(Subscriber &subscriber)
{
    if (subscriber.object) {
        std::erase(subscriber.object->subscribers, &subscriber);
        forgetUnneeded(*subscriber.object);
    } else if (subscriber.folder) {
        Folder &watched = *subscriber.folder;
        std::erase(watched.subscribers, &subscriber);
        std::vector<Object *> objects;
        for (const auto &[name, object] : watched.objects) {
            objects.push_back(object.get());
        }
        const bool isEmpty = objects.empty() && watched.subscribers.empty();
        for (Object *object : objects) {
            forgetUnneeded(*object);
        }
        if (isEmpty) {
            m_folders.erase(m_folders.find(watched.path));
        }
    }
    subscriber.object = nullptr;
    subscriber.folder = nullptr;
}

std::string Store::read(const Subscriber &subscriber, ReaderPosition &position) const
{
    std::string text;
    const uint64_t seen = seenVersion(position);
    if (subscriber.knowsWill && position.isSettled() && position.position.base < subscriber.folder->returned) {
        position.position = {subscriber.folder->returned, subscriber.folder->returned};
    }
    do {
        text = subscriber.object ? readObject(subscriber, position) : readFolder(subscriber, position);
    } while (text.empty() && !position.isSettled());
    if (text.empty() && subscriber.object && subscriber.selection.choosesChanges()) {
        // Changes that are not selected now are delivered with those that are.
        position = {{seen, seen}, {}};
    }
    return text;
}

std::string Store::readObject(const Subscriber &subscriber, ReaderPosition &position) const
{
    const uint64_t version = seenVersion(position);
    ReaderPosition after{{m_version, m_version}, {}};
    std::string text;
    appendUpToFence(text, *subscriber.object, {version, version}, subscriber.selection, after);
    position = std::move(after);
    return text;
}

// Objects are given out in the order of their last write. When the text is full, "reached" tells how far that went;
// what is written meanwhile comes later in the order, so nothing is missed.
std::string Store::readFolder(const Subscriber &subscriber, ReaderPosition &position) const
{
    ReaderPosition after{position.position, {}};
    std::string text;
    const auto add = [&](const Object &object, Position seen) {
        const size_t begin = text.size();
        const size_t heldBefore = after.held.size();
        appendUpToFence(text, object, seen, subscriber.selection, after);
        const bool fits = text.size() <= MaximumMessage;
        if (!fits) {
            text.resize(begin);
            after.held.resize(heldBefore);
        }
        return fits;
    };
    const auto isHeld = [&](const Object &object) {
        return std::any_of(position.held.begin(), position.held.end(),
                           [&](const Held &held) { return held.object == object.id; });
    };

    bool isComplete = true;
    for (const Held &held : position.held) {
        const auto found = m_byId.find(held.object);
        if (found == m_byId.end() || found->second->folder != subscriber.folder) {
            continue;
        }
        if (!isComplete || !add(*found->second, {held.version, held.version})) {
            isComplete = false;
            after.held.push_back(held);
        }
    }
    const std::list<Object *> &order = subscriber.folder->byVersion;
    auto at = order.end();
    while (at != order.begin() && (*std::prev(at))->content.version() > position.position.reached) {
        --at;
    }
    for (; at != order.end() && isComplete; ++at) {
        isComplete = isHeld(**at) || add(**at, position.position);
        if (isComplete) {
            after.position.reached = (*at)->content.version();
        }
    }
    if (isComplete) {
        after.position = {m_version, m_version};
    }
    position = std::move(after);
    return text;
}

std::vector<std::string> Store::pathsBelow(const std::string &folder) const
{
    std::vector<std::string> paths;
    for (auto at = m_folders.lower_bound(folder); at != m_folders.end() && at->first.starts_with(folder); ++at) {
        for (const auto &[name, object] : at->second->objects) {
            if (object->content.exists()) {
                paths.push_back(at->first + '/' + name);
            }
        }
    }
    return paths;
}

Folder &Store::folder(const std::string &path)
{
    std::unique_ptr<Folder> &folder = m_folders[path];
    if (!folder) {
        folder = std::make_unique<Folder>();
        folder->path = path;
    }
    return *folder;
}

Object *Store::find(const ObjectPath &path) const
{
    const auto folder = m_folders.find(path.folder);
    if (folder == m_folders.end()) {
        return nullptr;
    }
    const auto object = folder->second->objects.find(path.name);
    return object == folder->second->objects.end() ? nullptr : object->second.get();
}

Object &Store::findOrAdd(const ObjectPath &path)
{
    if (Object *object = find(path)) {
        return *object;
    }
    Folder &parent = folder(path.folder);
    std::unique_ptr<Object> &object = parent.objects[path.name];
    object = std::make_unique<Object>();
    object->folder = &parent;
    object->name = path.name;
    object->id = ++m_lastId;
    object->place = parent.byVersion.end();
    m_byId[object->id] = object.get();
    return *object;
}

void Store::moveToEnd(Object &object)
{
    std::list<Object *> &order = object.folder->byVersion;
    if (wasWritten(object)) {
        order.splice(order.end(), order, object.place);
    } else {
        object.place = order.insert(order.end(), &object);
    }
}

void Store::markDeleted(Object &object)
{
    object.content.remove(++m_version);
    object.fences.clear();
    updateCharge(object);
    ++object.folder->deleted;
    moveToEnd(object);
}

void Store::addFence(Object &object)
{
    if (object.fences.size() == MaximumFences) {
        object.fences.erase(object.fences.begin());
    }
    object.fences.push_back({object.content.version(), std::make_shared<const Content>(object.content)});
}

// Removes data that only readers need with the last of them. True when the object went as well.
bool Store::forgetUnneeded(Object &object)
{
    if (!object.content.exists() && object.subscribers.empty() && !wasWritten(object)) {
        erase(object);
        return true;
    }
    if (isWatched(object)) {
        return false;
    }
    object.fences.clear();
    if (!object.content.exists()) {
        erase(object);
        return true;
    }
    if (object.content.forgetDeletions()) {
        updateCharge(object);
    }
    return false;
}

void Store::forgetOldest(Folder &folder)
{
    for (auto at = folder.byVersion.begin(); folder.deleted > MaximumDeleted && at != folder.byVersion.end();) {
        Object &object = **at++;
        if (!object.content.exists() && object.subscribers.empty()) {
            erase(object);
        }
    }
}

void Store::erase(Object &object)
{
    Folder &parent = *object.folder;
    disown(object);
    if (wasWritten(object)) {
        parent.deleted -= !object.content.exists();
        parent.byVersion.erase(object.place);
    }
    m_byId.erase(object.id);
    parent.objects.erase(parent.objects.find(object.name));
    if (parent.objects.empty() && parent.subscribers.empty()) {
        m_folders.erase(m_folders.find(parent.path));
    }
}

} // namespace voro::pps
