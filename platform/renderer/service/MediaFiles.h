#pragma once

#include "DiskJob.h"
#include "FileView.h"
#include "MemoryFiles.h"

#include <pps/broker/Broker.h>
#include <pps/Fd.h>
#include <renderer/common/LocalFile.h>
#include <renderer/common/WorkerMessages.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace voro::renderer {

/**
 * Hands a worker the files that it reads: the medium, the captions and the key to the X server that its context was
 * given, and what local lists name; no other. Files in memory it gets here, too.
 */
class MediaFiles {
public:
    /**
     * Answers what is asked over the socket. When a list leads to the network, of which `onNetwork` hears if there is
     * one, the question for it stays without an answer.
     */
    MediaFiles(pps::Broker &broker, pps::Fd socket, std::function<void()> onNetwork = {});
    ~MediaFiles();
    MediaFiles(const MediaFiles &) = delete;
    MediaFiles &operator=(const MediaFiles &) = delete;

    /** The process that sees the files, and on whose account disks are waited for. */
    void setOwner(pid_t owner);
    /** Hands over what a request to open a medium names, the medium at once, and what it names no longer, no more. */
    void open(const requests::Open &request, int64_t id);
    /** The same for a change of all but the medium. */
    void set(const Settings &settings);
    /** Lets go of the files in memory that nobody uses any more. */
    void releaseMemory() { m_memory.release(); }

private:
    class Permission;
    struct Request {
        std::shared_ptr<Permission> permission;
        std::string path;
        int64_t id;
    };

    void receive();
    void hand(const std::string &path, int64_t id);
    void openNext();
    void opened(const Request &request, const Result &result, const LocalFile::Shared &file);
    bool chargeForLists();
    void makeMemory(std::string_view size, int64_t id);
    void answer(int64_t id, int error, int file = -1);

    pps::Broker &m_broker;
    pps::Fd m_socket;
    const std::function<void()> m_onNetwork;
    pid_t m_owner = 0;
    FileView::Shared m_view;
    MemoryFiles m_memory;
    /** Asked by the threads that open files. */
    std::shared_ptr<Permission> m_permission;
    /** For the lists that are kept. */
    pps::Accounts::Charge m_charge;
    size_t m_chargedSize = 0;
    /** One file is opened after the other, in front the one that is being opened. */
    std::deque<Request> m_requests;
    std::unique_ptr<DiskJob> m_job;
};

} // namespace voro::renderer
