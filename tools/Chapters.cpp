#include "Chapters.h"

#include <QtCore/QJsonArray>

#include <algorithm>
#include <limits>
#include <utility>

namespace voro {

namespace {

/** How far into a chapter going back leads to the one before, in milliseconds. */
constexpr unsigned Beginning = 3000;

} // namespace

void Chapters::follow(const QUrl &medium)
{
    if (medium == m_medium) {
        return;
    }
    m_medium = medium;
    m_chapters.clear();
    if (m_reader) {
        m_reader->disconnect(this);
        // It may be what reports at the moment.
        std::exchange(m_reader, nullptr)->deleteLater();
    }
    if (!medium.isLocalFile()) {
        return;
    }
    m_reader = new InfoReader(this);
    connect(m_reader, &QProcess::finished, this, [this] { take(m_reader->result()); });
    m_reader->read(medium.toLocalFile());
}

void Chapters::take(const QJsonObject &info)
{
    for (const QJsonValue chapter : info.value(QLatin1String("chapters")).toArray()) {
        const double begin = chapter[QLatin1String("start")].toDouble();
        if (begin >= 0 && begin <= std::numeric_limits<unsigned>::max()) {
            m_chapters.push_back({static_cast<unsigned>(begin), chapter[QLatin1String("title")].toString()});
        }
    }
    std::stable_sort(m_chapters.begin(), m_chapters.end(),
                     [](const Chapter &one, const Chapter &other) { return one.begin < other.begin; });
    Q_EMIT changed();
}

size_t Chapters::begunAt(unsigned position) const
{
    const auto next = std::upper_bound(m_chapters.begin(), m_chapters.end(), position,
                                       [](unsigned at, const Chapter &chapter) { return at < chapter.begin; });
    return static_cast<size_t>(next - m_chapters.begin());
}

QString Chapters::textAt(unsigned position) const
{
    const size_t number = begunAt(position);
    if (number == 0) {
        return {};
    }
    const QString &title = m_chapters[number - 1].title;
    const QString text = QStringLiteral("chapter %1 of %2").arg(number).arg(m_chapters.size());
    return title.isEmpty() ? text : text + QLatin1String(": ") + title;
}

std::optional<unsigned> Chapters::after(unsigned position) const
{
    const size_t next = begunAt(position);
    return next < m_chapters.size() ? std::optional(m_chapters[next].begin) : std::nullopt;
}

std::optional<unsigned> Chapters::before(unsigned position) const
{
    if (m_chapters.empty()) {
        return std::nullopt;
    }
    const size_t number = begunAt(position > Beginning ? position - Beginning : 0);
    return number == 0 ? 0 : m_chapters[number - 1].begin;
}

} // namespace voro
