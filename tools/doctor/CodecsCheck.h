#pragma once

#include "Check.h"

#include <QtCore/QString>

namespace voro::doctor {

/** Which formats play and can be recorded, by the plugins of GStreamer that are installed. Nothing is decoded. */
class CodecsCheck : public Check {
public:
    /** Looks into the folder of plugins that this program was built for. */
    CodecsCheck();
    explicit CodecsCheck(QString plugins) : m_plugins(std::move(plugins)) {}

    const char *name() const override { return "codecs"; }
    std::vector<Finding> examine() const override;

private:
    const QString m_plugins;
};

} // namespace voro::doctor
