#pragma once

#include "LogCatcher.h"
#include "private/Logger.h"
#include "private/MmrContextNotifier.h"
#include "ScriptedRenderer.h"
#include "SignalLog.h"

#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <functional>
#include <memory>

/** Every property that an object's class adds to QObject, as "name=value". */
QStringList propertiesOf(const QObject &object);

/**
 * A player or recorder with a scripted renderer and its log. The renderer's objects cannot be watched, so that a test
 * itself plays the monitor.
 */
template<typename Media>
class MediaFixture {
public:
    explicit MediaFixture(const std::function<void(voro::test::ScriptedRenderer &)> &script = {})
        : renderer(trace,
                   [&](voro::test::ScriptedRenderer &scripted) {
                       qputenv("VORO_RUNTIME_DIR", folder.path().toUtf8());
                       qputenv("VORO_AUTOSPAWN", "0");
                       if (script) {
                           script(scripted);
                       }
                   }),
          emitted(&media, trace),
          notifier(*media.template findChild<voro::multimedia::MmrContextNotifier *>())
    {}

    QStringList state() const { return propertiesOf(media); }

    /** Forgets the trace and the lines so far. */
    void forget()
    {
        trace.clear();
        log.takeLines();
    }

    /** The renderer calls and the signals, in their order. */
    QStringList trace;
    QTemporaryDir folder;
    voro::test::LogCatcher log;
    voro::test::ScriptedRenderer renderer;
    /** A test may destroy it. */
    std::unique_ptr<Media> owned = std::make_unique<Media>();
    Media &media = *owned;
    SignalLog emitted;
    voro::multimedia::MmrContextNotifier &notifier;
    const QString contextName =
        trace.filter(QStringLiteral("mmr_context_create ")).value(0).section(QLatin1Char(' '), 1, 1);
};

template<typename Media>
using ActionOn = std::function<voro::multimedia::MediaError::Type(MediaFixture<Media> &)>;
template<typename Media>
using PreparationOf = std::function<void(MediaFixture<Media> &)>;

/** A row of a table: what has to come of an action on an object that was prepared for it. */
template<typename Media>
struct CaseOf {
    PreparationOf<Media> given;
    ActionOn<Media> act;
    /**
     * Calls and signals in their order, then the warnings and critical lines, then every property that changed as
     * "name=value", then the result as "-> InvalidState" unless it is `None`; with "; " between.
     */
    QString outcome;
};

/** Fetches the current row and tries it. */
template<typename Media>
void tryRow()
{
    QFETCH(CaseOf<Media>, data);
    MediaFixture<Media> f;
    data.given(f);
    f.forget();
    const QStringList earlier = f.state();
    const auto result = data.act(f);
    QStringList outcome = f.trace + f.log.takeLines();
    for (const QString &line : f.state()) {
        if (!earlier.contains(line)) {
            outcome += line;
        }
    }
    if (result != voro::multimedia::MediaError::None) {
        outcome += QStringLiteral("-> ") + QLatin1String(voro::multimedia::keyName(result));
    }
    QCOMPARE(outcome, data.outcome.split(QStringLiteral("; "), Qt::SkipEmptyParts));
}

// Preparations and actions

template<typename Media, typename... Parameters, typename... Arguments>
ActionOn<Media> call(voro::multimedia::MediaError::Type (Media::*method)(Parameters...), Arguments... arguments)
{
    return [=](MediaFixture<Media> &f) { return (f.media.*method)(arguments...); };
}

template<typename Media, typename... Parameters, typename... Arguments>
ActionOn<Media> call(void (Media::*method)(Parameters...), Arguments... arguments)
{
    return [=](MediaFixture<Media> &f) {
        (f.media.*method)(arguments...);
        return voro::multimedia::MediaError::None;
    };
}

/** The monitor reports something. */
template<typename... Parameters, typename... Arguments>
auto reported(void (voro::multimedia::MmrContextNotifier::*signal)(Parameters...), Arguments... arguments)
{
    return [=](auto &f) {
        (f.notifier.*signal)(arguments...);
        return voro::multimedia::MediaError::None;
    };
}

/** The renderer fails a function from now on. */
inline auto failing(const char *function, voro::multimedia::MediaError::Type code, int64_t extraValue = 0)
{
    return [=](auto &f) { f.renderer.fail(QLatin1String(function), code, extraValue); };
}

/** Several steps that lead to the state of a row. */
template<typename... Steps>
auto after(Steps... steps)
{
    return [=](auto &f) { (static_cast<void>(steps(f)), ...); };
}
