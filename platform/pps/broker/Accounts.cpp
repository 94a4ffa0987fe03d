#include "Accounts.h"

#include <malloc.h>
#include <sys/resource.h>

#include <algorithm>

namespace voro::pps {

namespace {

constexpr size_t Fraction = 4;
constexpr size_t Memory = 64 * 1024 * 1024;
/** So much has to be free before it is given back, which takes time. */
constexpr size_t WorthTrimming = 4 * 1024 * 1024;

size_t descriptorLimit()
{
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    return limit.rlim_cur;
}

} // namespace

Accounts::Charge &Accounts::Charge::operator=(Charge &&other) noexcept
{
    release();
    m_accounts = std::exchange(other.m_accounts, nullptr);
    m_account = other.m_account;
    m_resource = other.m_resource;
    m_amount = other.m_amount;
    return *this;
}

pid_t Accounts::Charge::process() const
{
    return m_account->process;
}

bool Accounts::Charge::resize(size_t amount)
{
    if (!m_accounts->add(*m_account, m_resource, m_amount, amount)) {
        return false;
    }
    m_amount = amount;
    return true;
}

void Accounts::Charge::leave()
{
    Accounts &accounts = *m_accounts;
    const size_t amount = m_amount;
    resize(0);
    accounts.drop(*m_account);
    m_account = &accounts.m_left;
    ++m_account->charges;
    resize(amount);
}

bool Accounts::Charge::isLeft() const
{
    return m_accounts && m_account == &m_accounts->m_left;
}

void Accounts::Charge::release()
{
    if (m_accounts) {
        resize(0);
        std::exchange(m_accounts, nullptr)->drop(*m_account);
    }
}

Accounts::Accounts()
{
    // All that the descriptors are for has a part of them. A worker takes seven, and sixteen for files in memory if it
    // wants.
    const size_t descriptors = descriptorLimit();
    m_capacities[at(Resource::Memory)] = Memory;
    m_capacities[at(Resource::Connections)] = std::min<size_t>(8192, descriptors / 2);
    m_capacities[at(Resource::Contexts)] = 1024;
    m_capacities[at(Resource::Workers)] = std::min<size_t>(256, descriptors / 64);
    m_capacities[at(Resource::Viewers)] = std::min<size_t>(1024, descriptors / 16);
    m_capacities[at(Resource::DiskJobs)] = 64;
}

Accounts::Charge Accounts::take(pid_t process, Resource resource, size_t amount)
{
    Charge charge;
    Account &payer = account(process);
    ++payer.charges;
    if (add(payer, resource, 0, amount)) {
        charge.m_accounts = this;
        charge.m_account = &payer;
        charge.m_resource = resource;
        charge.m_amount = amount;
    } else {
        drop(payer);
    }
    return charge;
}

size_t Accounts::room(pid_t process, Resource resource) const
{
    if (process == Services) {
        return room(m_services, resource);
    }
    const auto found = m_processes.find(process);
    return room(found == m_processes.end() ? Account{process, {}, 0} : found->second, resource);
}

bool Accounts::isOverfull() const
{
    const size_t memory = at(Resource::Memory);
    return m_used[memory] + m_left.used[memory] > m_capacities[memory];
}

void Accounts::trim()
{
    m_peak = std::max(m_peak, memory());
    if (m_peak - memory() >= WorthTrimming) {
        m_peak = memory();
        malloc_trim(0);
    }
}

Accounts::Account &Accounts::account(pid_t process)
{
    if (process == Services) {
        return m_services;
    }
    Account &account = m_processes[process];
    account.process = process;
    return account;
}

size_t Accounts::room(const Account &account, Resource resource) const
{
    const size_t used = account.used[at(resource)];
    const size_t capacity = m_capacities[at(resource)];
    const bool isProcess = account.process != Services;
    const size_t most = isProcess ? (capacity - (m_used[at(resource)] - used)) / Fraction : capacity;
    return most - std::min(most, used);
}

bool Accounts::add(Account &account, Resource resource, size_t before, size_t amount)
{
    const bool isLeft = &account == &m_left;
    if (!isLeft && amount > before && amount - before > room(account, resource)) {
        return false;
    }
    account.used[at(resource)] += amount - before;
    if (account.process != Services) {
        m_used[at(resource)] += amount - before;
    }
    m_peak = std::max(m_peak, memory());
    return true;
}

/** Forgets an account that nothing is charged to any more. */
void Accounts::drop(Account &account)
{
    if (--account.charges == 0 && account.process != Services) {
        m_processes.erase(account.process);
    }
}

size_t Accounts::memory() const
{
    const size_t memory = at(Resource::Memory);
    return m_used[memory] + m_services.used[memory] + m_left.used[memory];
}

} // namespace voro::pps
