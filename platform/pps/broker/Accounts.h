#pragma once

#include <sys/types.h>

#include <array>
#include <cstddef>
#include <unordered_map>
#include <utility>

namespace voro::pps {

/** The resources that the processes of a user share. */
enum class Resource {
    /** Bytes that objects, unread messages and waiting commands take, with all that keeping them costs. */
    Memory,
    Connections,
    Contexts,
    Workers,
    /** Connections of processes that show pictures. */
    Viewers,
    /** Threads that wait for a disk. */
    DiskJobs,
};

/**
 * Accounts for the resources that each process uses. A process may have a quarter of what the others leave, so there
 * is always something left for the next one. The services of this process have a reserve of their own. The remains of
 * processes that have gone are counted together and count against nobody: they go when the room is needed.
 */
class Accounts {
    struct Account;

public:
    /** The account of the services in this process. */
    static constexpr pid_t Services = 0;

    /** A process's use of a resource, which ends with this object. It must not outlive the accounts. */
    class Charge {
    public:
        Charge() = default;
        ~Charge() { release(); }
        Charge(Charge &&other) noexcept { *this = std::move(other); }
        Charge &operator=(Charge &&other) noexcept;

        /** False for one that was refused, or was released. */
        bool isValid() const { return m_accounts != nullptr; }
        pid_t process() const;
        /** Makes it larger or smaller. False when the process cannot have that much: nothing has changed then. */
        bool resize(size_t amount);
        /** Counts it among the remains of processes that have gone. */
        void leave();
        bool isLeft() const;
        void release();

    private:
        friend class Accounts;
        Accounts *m_accounts = nullptr;
        Account *m_account = nullptr;
        Resource m_resource = Resource::Memory;
        size_t m_amount = 0;
    };

    Accounts();
    Accounts(const Accounts &) = delete;
    Accounts &operator=(const Accounts &) = delete;

    /** Charges a process; the charge is not valid when the process cannot have that much. */
    Charge take(pid_t process, Resource resource, size_t amount = 1);
    /** How much more the process could have now. */
    size_t room(pid_t process, Resource resource) const;
    /** Whether memory that was left behind has to make room. */
    bool isOverfull() const;
    /** Gives memory back to the system once much of it is free. */
    void trim();

private:
    static constexpr size_t Resources = 6;
    using Amounts = std::array<size_t, Resources>;
    struct Account {
        pid_t process = Services;
        Amounts used{};
        size_t charges = 0;
    };

    static size_t at(Resource resource) { return static_cast<size_t>(resource); }
    Account &account(pid_t process);
    size_t room(const Account &account, Resource resource) const;
    bool add(Account &account, Resource resource, size_t before, size_t amount);
    void drop(Account &account);
    size_t memory() const;

    /** The processes' total, and the services' reserve besides. */
    Amounts m_capacities;
    Account m_services;
    Account m_left;
    std::unordered_map<pid_t, Account> m_processes;
    /** The use of the processes that are alive. */
    Amounts m_used{};
    size_t m_peak = 0;
};

} // namespace voro::pps
