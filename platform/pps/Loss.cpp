#include "Loss.h"

#include <atomic>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

namespace voro::pps {

struct KeptWill {
    uint64_t broker = 0;
    FolderWill will;
    /** The broker whose will was dropped last. */
    uint64_t dropped = 0;
};

namespace {

struct Shared {
    std::mutex mutex;
    std::map<std::string, std::weak_ptr<KeptWill>> wills;
    std::vector<Waiter *> waiters;
    std::atomic<uint64_t> broker = 0;
    std::atomic<uint64_t> lost = 0;
};

// Never destroyed: objects may still be closed while the process ends.
Shared &shared()
{
    static Shared &shared = *new Shared;
    return shared;
}

std::shared_ptr<KeptWill> find(const std::string &folder)
{
    const auto found = shared().wills.find(folder);
    return found == shared().wills.end() ? nullptr : found->second.lock();
}

} // namespace

std::shared_ptr<KeptWill> keepWill(const std::string &folder, FolderWill will, uint64_t broker)
{
    Shared &all = shared();
    const std::lock_guard lock(all.mutex);
    auto kept = all.wills[folder].lock();
    if (!kept) {
        std::erase_if(all.wills, [](const auto &entry) { return entry.second.expired(); });
        kept = std::make_shared<KeptWill>();
        all.wills[folder] = kept;
    }
    kept->broker = broker;
    kept->will = std::move(will);
    return kept;
}

FolderWill findWill(const std::string &folder, uint64_t broker)
{
    const std::lock_guard lock(shared().mutex);
    const auto kept = find(folder);
    if (kept && kept->dropped == broker) {
        return {{}, 0, true};
    }
    return kept && kept->broker == broker ? kept->will : FolderWill();
}

void dropWill(const std::string &folder, uint64_t broker)
{
    const std::lock_guard lock(shared().mutex);
    if (const auto kept = find(folder)) {
        kept->dropped = broker;
    }
}

void brokerLost(uint64_t broker)
{
    shared().lost = broker;
}

bool isBrokerLost(uint64_t broker)
{
    return shared().lost == broker;
}

std::string partOf(std::string_view will, const ObjectPath &path)
{
    if (path.isAll()) {
        return std::string(will);
    }
    while (!will.empty()) {
        const std::string_view text = takeText(will);
        if (text.substr(1, text.find('\n') - 1) == path.name) {
            return std::string(text);
        }
    }
    return {};
}

std::string_view takeText(std::string_view &texts)
{
    const size_t end = texts.find("\n@");
    const std::string_view text = texts.substr(0, end == std::string_view::npos ? end : end + 1);
    texts.remove_prefix(text.size());
    return text;
}

void addWaiter(Waiter &waiter)
{
    const std::lock_guard lock(shared().mutex);
    shared().waiters.push_back(&waiter);
}

void removeWaiter(Waiter &waiter)
{
    const std::lock_guard lock(shared().mutex);
    std::erase(shared().waiters, &waiter);
}

void callWaiters()
{
    const std::lock_guard lock(shared().mutex);
    for (Waiter *waiter : shared().waiters) {
        waiter->daemonReached();
    }
}

void brokerReached(uint64_t broker)
{
    if (isBrokerLost(broker)) {
        shared().lost = 0;
    }
    if (shared().broker.exchange(broker) != broker) {
        callWaiters();
    }
}

} // namespace voro::pps
