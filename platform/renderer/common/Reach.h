#pragma once

namespace voro::renderer {

/** The places that a worker may reach beyond the sound server and the files that it is handed. */
struct Reach {
    bool network = false;
    /** The local X servers. */
    bool windows = false;

    bool operator==(const Reach &) const = default;
};

/** The options that give a worker its reach, and that which makes a nursery. */
inline constexpr char NetworkOption[] = "--network";
inline constexpr char WindowsOption[] = "--windows";
inline constexpr char NurseryOption[] = "--nursery";

} // namespace voro::renderer
