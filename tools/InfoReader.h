#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QProcess>

namespace voro {

/** Has the program voro-info read what a file says of itself. */
class InfoReader : public QProcess {
    Q_OBJECT
public:
    using QProcess::QProcess;
    /** Kills the program, should it still read. */
    ~InfoReader() override;

    void read(const QString &path);
    /** What was found, once it has finished; empty for what is no medium. */
    QJsonObject result();
};

} // namespace voro
