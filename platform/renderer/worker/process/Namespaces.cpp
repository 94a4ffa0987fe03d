#include "Namespaces.h"

#include "SoundServer.h"
#include "SystemPlaces.h"

#include <fcntl.h>
#include <pps/Fd.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace voro::renderer {

namespace {

/** Where the new root is made; what the old one has there can be seen no more. */
constexpr char NewRoot[] = "/tmp";
/** The kernel's view of all processes, for the nursery only. */
constexpr char AllProcesses[] = "/.processes";
constexpr char ThisProcess[] = "/proc/self";

/** A file or folder of the old root. */
struct Place {
    std::string path;
    bool isWritable = false;
};

bool writeTo(const char *path, const std::string &text)
{
    const pps::Fd file(open(path, O_WRONLY | O_CLOEXEC));
    return file.isValid() && write(file.get(), text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

/** Enters a user namespace in which the user is who he was, and nobody else is. */
bool becomeOwnUser()
{
    const auto self = [](auto id) { return std::to_string(id) + ' ' + std::to_string(id) + " 1"; };
    const std::string user = self(geteuid());
    const std::string group = self(getegid());
    return unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && writeTo("/proc/self/setgroups", "deny")
           && writeTo("/proc/self/uid_map", user) && writeTo("/proc/self/gid_map", group);
}

/** Tries it in another process: half of it would leave this one without its user. */
bool canBecomeOwnUser()
{
    const pid_t child = fork();
    if (child == 0) {
        _exit(becomeOwnUser() ? 0 : 1);
    }
    int status = 1;
    return child > 0 && waitpid(child, &status, 0) == child && status == 0;
}

bool makeFolders(const std::string &path)
{
    std::error_code error;
    std::filesystem::create_directories(path, error);
    return !error;
}

bool makeFile(const std::string &path)
{
    return pps::Fd(open(path.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600)).isValid();
}

/** Has what is mounted there stay as it is, and perhaps read-only. */
bool fix(int tree, const char *path, unsigned flags, bool isWritable = false)
{
    mount_attr attributes{};
    attributes.attr_set = MOUNT_ATTR_NOSUID | (isWritable ? 0U : MOUNT_ATTR_RDONLY);
    attributes.propagation = MS_PRIVATE;
    return mount_setattr(tree, path, flags, &attributes, sizeof attributes) == 0;
}

/** A root that shows places of the old one. */
class Root {
public:
    /** Takes hold of a place; what does not exist, or is part of another place, is skipped. */
    bool add(const Place &place);
    bool enter();

private:
    bool isShown(const std::string &path) const;

    struct Tree {
        pps::Fd mount;
        std::string path;
        bool isFolder;
    };
    struct Link {
        std::string path;
        std::string target;
    };
    std::vector<Tree> m_trees;
    std::vector<Link> m_links;
    std::vector<std::string> m_shown;
};

bool Root::isShown(const std::string &path) const
{
    return std::ranges::any_of(
        m_shown, [&path](const std::string &shown) { return path == shown || path.starts_with(shown + '/'); });
}

bool Root::add(const Place &place)
{
    std::error_code error;
    const std::string real = std::filesystem::canonical(place.path, error).string();
    if (error) {
        return true;
    }
    if (!isShown(real)) {
        pps::Fd tree(open_tree(AT_FDCWD, real.c_str(), OPEN_TREE_CLONE | OPEN_TREE_CLOEXEC | AT_RECURSIVE));
        if (!tree.isValid() || !fix(tree.get(), "", AT_EMPTY_PATH | AT_RECURSIVE, place.isWritable)) {
            return false;
        }
        m_trees.push_back({std::move(tree), real, std::filesystem::is_directory(real, error)});
        m_shown.push_back(real);
    }
    if (place.path != real && !isShown(place.path)) {
        m_links.push_back({place.path, real});
        m_shown.push_back(place.path);
    }
    return true;
}

bool Root::enter()
{
    pps::Fd processes(open_tree(AT_FDCWD, "/proc", OPEN_TREE_CLONE | OPEN_TREE_CLOEXEC | AT_RECURSIVE));
    if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0
        || mount("voro", NewRoot, "tmpfs", MS_NOSUID | MS_NODEV, "mode=0755,size=1m") != 0) {
        return false;
    }
    m_trees.push_back({std::move(processes), AllProcesses, true});
    bool isMade = makeFolders(std::string(NewRoot) + ThisProcess);
    for (const Tree &tree : m_trees) {
        const std::string target = NewRoot + tree.path;
        isMade = isMade && makeFolders(tree.isFolder ? target : target.substr(0, target.rfind('/')))
                 && (tree.isFolder || makeFile(target))
                 && move_mount(tree.mount.get(), "", AT_FDCWD, target.c_str(), MOVE_MOUNT_F_EMPTY_PATH) == 0;
    }
    for (const Link &link : m_links) {
        const std::string path = NewRoot + link.path;
        isMade =
            isMade && makeFolders(path.substr(0, path.rfind('/'))) && symlink(link.target.c_str(), path.c_str()) == 0;
    }
    if (!isMade || chdir(NewRoot) != 0 || syscall(SYS_pivot_root, ".", ".") != 0) {
        umount2(NewRoot, MNT_DETACH);
        return false;
    }
    // The old root lies over the new one until it is taken off.
    return umount2(".", MNT_DETACH) == 0 && chdir("/") == 0 && fix(AT_FDCWD, "/", 0);
}

} // namespace

bool enterNamespaces(const OwnElements &elements)
{
    std::vector<Place> places;
    for (const auto &all : {systemPlaces(), soundServerPlaces(), networkPlaces(), screenPlaces(), elements.files}) {
        for (const std::string &path : all) {
            places.push_back({path});
        }
    }
    for (const std::string &folder : elements.folders) {
        places.push_back({folder, true});
    }
    std::erase_if(places, [](const Place &place) { return place.path.empty() || place.path == ThisProcess; });
    std::ranges::stable_sort(places, {}, [](const Place &place) { return place.path.size(); });
    if (!canBecomeOwnUser() || !becomeOwnUser()) {
        return false;
    }
    Root root;
    return std::ranges::all_of(places, [&root](const Place &place) { return root.add(place); }) && root.enter();
}

bool leaveNetwork()
{
    return unshare(CLONE_NEWNET) == 0;
}

bool narrowNamespaces(Reach reach)
{
    if (unshare(CLONE_NEWNS | CLONE_NEWIPC) != 0) {
        return false;
    }
    const std::string process = std::string(AllProcesses) + '/' + std::to_string(getpid());
    bool isNarrow = mount(process.c_str(), ThisProcess, nullptr, MS_BIND | MS_REC, nullptr) == 0
                    && umount2(AllProcesses, MNT_DETACH) == 0;
    const auto takeOff = [&isNarrow](const std::vector<std::string> &places) {
        for (const std::string &place : places) {
            const bool isThere = access(place.c_str(), F_OK) == 0;
            isNarrow = (!isThere || umount2(place.c_str(), MNT_DETACH) == 0) && isNarrow;
        }
    };
    if (!reach.windows) {
        takeOff(screenPlaces());
    }
    if (!reach.network) {
        takeOff(networkPlaces());
    }
    return isNarrow;
}

} // namespace voro::renderer
