#pragma once

#include "LogCatcher.h"
#include "private/Logger.h"
#include "private/MmrContextNotifier.h"
#include "Rows.h"
#include "RuntimeBroker.h"
#include "ScriptedRenderer.h"
#include "SignalLog.h"

#include <QtTest/QtTest>

#include <functional>
#include <memory>

/** Every property that an object's class adds to QObject, as "name=value". */
QStringList propertiesOf(const QObject &object);
/** Passes through the event loop once. */
void runEventLoop();

/**
 * A player or recorder with a scripted renderer and its log. Without a RuntimeBroker the renderer's objects cannot be
 * watched, so that a test itself plays the monitor.
 */
template<typename Media>
class MediaFixture {
public:
    explicit MediaFixture(const std::function<void(voro::test::ScriptedRenderer &)> &script = {})
        : renderer(trace,
                   [&](voro::test::ScriptedRenderer &scripted) {
                       if (!RuntimeBroker::current()) {
                           qputenv("VORO_RUNTIME_DIR", folder.path().toUtf8());
                           qputenv("VORO_AUTOSPAWN", "0");
                       }
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
        log.takeDebugLines();
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

/**
 * A table of what has to come of actions on objects that were prepared for them: calls and signals in their order, then
 * the warnings and critical lines, then every property that changed as "name=value", then the result as
 * "-> InvalidState" unless it is `None`; with "; " between.
 */
template<typename Media>
class CasesOf : public Rows<PreparationOf<Media>, ActionOn<Media>, QString> {
public:
    CasesOf() : Rows<PreparationOf<Media>, ActionOn<Media>, QString>("given", "act", "outcome") {}
};

/**
 * What comes of an action on an object that is destroyed in its slot of one line of the trace, and then runs an event
 * loop there; with -1 it lives.
 */
template<typename Media>
void record(QStringList &trace, const PreparationOf<Media> &given, const ActionOn<Media> &act, qsizetype end)
{
    MediaFixture<Media> f;
    given(f);
    f.forget();
    const QPointer<voro::multimedia::MmrContextNotifier> monitor(&f.notifier);
    f.emitted.setThen([&] {
        if (f.trace.size() != end + 1) {
            return;
        }
        f.owned.reset();
        runEventLoop();
        QVERIFY2(monitor, "what was under way is gone");
    });
    QCOMPARE(act(f), voro::multimedia::MediaError::None);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(!f.owned, end >= 0);
    QCOMPARE(monitor.isNull(), end >= 0);
    QCOMPARE(f.log.takeLines(), QStringList());
    trace = f.trace;
}

/** Destroys the object in the slot of each signal that an action leads to. */
template<typename Media>
void destroyEverywhere(const PreparationOf<Media> &given, const ActionOn<Media> &act)
{
    QStringList whole;
    record<Media>(whole, given, act, -1);
    for (qsizetype end = 0; end < whole.size() && !QTest::currentTestFailed(); ++end) {
        // Renderer calls have no brackets.
        if (!whole.at(end).endsWith(QLatin1Char(')'))) {
            continue;
        }
        QStringList trace;
        record<Media>(trace, given, act, end);
        QCOMPARE(trace, whole.mid(0, end + 1) + (QStringList{"mmr_context_destroy", "mmr_disconnect"}));
    }
}

/**
 * Fetches the current row and tries it: its outcome, and, when nothing goes wrong in it, that the object may be
 * destroyed in the slot of each of its signals.
 */
template<typename Media>
void tryRow()
{
    QFETCH(PreparationOf<Media>, given);
    QFETCH(ActionOn<Media>, act);
    QFETCH(QString, outcome);
    bool isSmooth = false;
    {
        MediaFixture<Media> f;
        given(f);
        f.forget();
        const QStringList earlier = f.state();
        const auto result = act(f);
        const QStringList lines = f.log.takeLines();
        QStringList found = f.trace + lines;
        for (const QString &line : f.state()) {
            if (!earlier.contains(line)) {
                found += line;
            }
        }
        isSmooth = result == voro::multimedia::MediaError::None && lines.isEmpty();
        if (result != voro::multimedia::MediaError::None) {
            found += QStringLiteral("-> ") + QLatin1String(voro::multimedia::keyName(result));
        }
        QCOMPARE(found, outcome.split(QStringLiteral("; "), Qt::SkipEmptyParts));
    }
    if (isSmooth && !QTest::currentTestFailed()) {
        destroyEverywhere<Media>(given, act);
    }
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

/**
 * The renderer publishes objects, with " | " between, which the monitor reads together. Returns with the last signal
 * that comes of them.
 */
inline auto published(const char *objects, const char *last)
{
    return [=](auto &f) {
        for (const QString &object : QString::fromLatin1(objects).split(QStringLiteral(" | "))) {
            RuntimeBroker::current()->publish(voro::test::contextFolder(f.contextName), object);
        }
        const auto isOver = [&] { return !f.owned || f.trace.contains(QLatin1String(last)); };
        return QTest::qWaitFor(isOver) ? voro::multimedia::MediaError::None : voro::multimedia::MediaError::Internal;
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
