#pragma once

#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include <functional>
#include <vector>

namespace voro {

/**
 * Decides when a person sees the library's log lines, which go to standard error: those of a command that succeeds are
 * dropped (trying one kind of input after the other is no news), those of one that fails are shown. With
 * `VOROMULTIMEDIA_LOG_DEBUG=1` everything is shown as it comes. One at a time.
 */
class LogFilter {
public:
    /** `makeRoom` is called before something is shown. */
    explicit LogFilter(std::function<void()> makeRoom);
    ~LogFilter();
    LogFilter(const LogFilter &) = delete;
    LogFilter &operator=(const LogFilter &) = delete;

    /** Runs a command of the library and returns its result; 0 (`None`) is success. */
    template<typename Function>
    auto run(Function command)
    {
        m_isHolding = !m_showsAll;
        const auto error = command();
        m_isHolding = false;
        finish(error != 0);
        return error;
    }

private:
    struct Line {
        QtMsgType type;
        QString text;
    };

    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text);
    void finish(bool failed);

    std::function<void()> m_makeRoom;
    bool m_showsAll;
    bool m_isHolding = false;
    std::vector<Line> m_held;
};

} // namespace voro
