#pragma once

#include <multimedia/MediaError.h>

#include <QtCore/QHash>
#include <QtCore/QStringList>

#include <cstdint>
#include <functional>

namespace voro::test {

/**
 * Stands in for the renderer service: a program that links it has its `mmr_*` and `strm_*` functions in place of the
 * platform's. It records the calls and answers them as it was told. One at a time.
 */
class ScriptedRenderer {
public:
    /**
     * Records into the trace: each call as its function and arguments with blanks between, dictionaries as KEY=VALUE
     * in the order in which the entries were set. `script` tells what to do from the first call on.
     */
    explicit ScriptedRenderer(QStringList &trace, const std::function<void(ScriptedRenderer &)> &script = {});
    /** Every dictionary must have been consumed or destroyed by then. */
    ~ScriptedRenderer();
    Q_DISABLE_COPY_MOVE(ScriptedRenderer)

    static ScriptedRenderer *current();

    /** Fails every call of a function with an error record from now on. */
    void fail(const QString &function, multimedia::MediaError::Type code, int64_t extraValue = 0);
    /** Fails it without an error record. */
    void failWithoutRecord(const QString &function);
    /** Lets a function succeed again. */
    void succeed(const QString &function);
    /** Fails the setting of a key in any dictionary from now on. */
    void failKey(const QString &key) { m_failingKey = key; }

    /** How many dictionaries exist. */
    int dictionaryCount() const { return m_dictionaries; }
    void countDictionary(int change) { m_dictionaries += change; }
    bool isKeyFailing(const QString &key) const { return !key.isEmpty() && key == m_failingKey; }

    struct Failure {
        bool recorded;
        multimedia::MediaError::Type code;
        int64_t extraValue;
    };
    /** Records a call; the failure that it has to end with, or null. */
    const Failure *call(const QString &function, const QStringList &arguments);

private:
    static ScriptedRenderer *s_current;
    QStringList &m_trace;
    QHash<QString, Failure> m_failures;
    QString m_failingKey;
    int m_dictionaries = 0;
};

/** The folder in which the scripted renderer's context of a name publishes. */
QString contextFolder(const QString &name);

} // namespace voro::test
