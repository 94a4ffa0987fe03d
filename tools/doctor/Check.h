#pragma once

#include <QtCore/QString>

#include <vector>

namespace voro::doctor {

/** How well a thing works. */
enum class Health {
    Good,
    /** Something works less well than it could, or only in part. */
    Limited,
    Missing
};

/** What a check found out. */
struct Finding {
    Health health;
    QString text;
    /** What to do about it; empty when there is nothing to do. */
    QString remedy{};
};

/** A part of the machine that `voro doctor` looks at. */
class Check {
public:
    Check() = default;
    virtual ~Check() = default;
    Check(const Check &) = delete;
    Check &operator=(const Check &) = delete;

    /** As it is asked for on the command line. */
    virtual const char *name() const = 0;
    virtual std::vector<Finding> examine() const = 0;
};

} // namespace voro::doctor
