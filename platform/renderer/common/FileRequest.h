#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>

/*
 * How a worker gets the files that it reads, which it may not open itself. Over a socket of its own it sends a number
 * and a path; the answer is the same number and an errno number, 0 with the descriptor of the file. The medium of a
 * request to open is handed over unasked, with the request's number; the worker's own numbers are negative. Instead of
 * a path it may send "memory:" and a size in bytes, for a file in memory.
 */

namespace voro::renderer {

/** The socket for it that a worker is started with. */
inline constexpr int WorkerMediaSocket = 5;

inline constexpr size_t MaximumPath = 4096;
inline constexpr std::string_view MemoryPrefix = "memory:";

struct FileAnswer {
    int64_t id = 0;
    int32_t error = 0;

    std::array<std::byte, sizeof id + sizeof error> toBytes() const
    {
        std::array<std::byte, sizeof id + sizeof error> bytes{};
        std::memcpy(bytes.data(), &id, sizeof id);
        std::memcpy(bytes.data() + sizeof id, &error, sizeof error);
        return bytes;
    }
    static std::optional<FileAnswer> fromBytes(std::span<const std::byte> bytes)
    {
        FileAnswer answer;
        if (bytes.size() != sizeof id + sizeof error) {
            return std::nullopt;
        }
        std::memcpy(&answer.id, bytes.data(), sizeof id);
        std::memcpy(&answer.error, bytes.data() + sizeof id, sizeof error);
        return answer;
    }
};

} // namespace voro::renderer
