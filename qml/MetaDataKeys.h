#pragma once

#include <multimedia/MetaData.h>

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

namespace voro::qml {

/** The keys of metadata maps: `player.metaData[MetaData.Title]`. */
class MetaDataKeys : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(MetaData)
    QML_SINGLETON
    QML_ADDED_IN_VERSION(1, 0)
    Q_PROPERTY(QString Title MEMBER m_title CONSTANT)
    Q_PROPERTY(QString Artist MEMBER m_artist CONSTANT)
    Q_PROPERTY(QString Album MEMBER m_album CONSTANT)
    Q_PROPERTY(QString Composer MEMBER m_composer CONSTANT)
    Q_PROPERTY(QString Genre MEMBER m_genre CONSTANT)
    Q_PROPERTY(QString Year MEMBER m_year CONSTANT)
    Q_PROPERTY(QString Track MEMBER m_track CONSTANT)
    Q_PROPERTY(QString Disc MEMBER m_disc CONSTANT)
    Q_PROPERTY(QString Duration MEMBER m_duration CONSTANT)
    Q_PROPERTY(QString Description MEMBER m_description CONSTANT)
    Q_PROPERTY(QString Uri MEMBER m_uri CONSTANT)
    Q_PROPERTY(QString ArtworkUri MEMBER m_artworkUri CONSTANT)
    Q_PROPERTY(QString BitRate MEMBER m_bitRate CONSTANT)
    Q_PROPERTY(QString SampleRate MEMBER m_sampleRate CONSTANT)
    Q_PROPERTY(QString Width MEMBER m_width CONSTANT)
    Q_PROPERTY(QString Height MEMBER m_height CONSTANT)
    Q_PROPERTY(QString PixelWidth MEMBER m_pixelWidth CONSTANT)
    Q_PROPERTY(QString PixelHeight MEMBER m_pixelHeight CONSTANT)
    Q_PROPERTY(QString Seekable MEMBER m_seekable CONSTANT)
    Q_PROPERTY(QString Orientation MEMBER m_orientation CONSTANT)
    Q_PROPERTY(QString Latitude MEMBER m_latitude CONSTANT)
    Q_PROPERTY(QString Longitude MEMBER m_longitude CONSTANT)
    Q_PROPERTY(QString Shutter MEMBER m_shutter CONSTANT)
    Q_PROPERTY(QString Aperture MEMBER m_aperture CONSTANT)
    Q_PROPERTY(QString FocalLength MEMBER m_focalLength CONSTANT)
    Q_PROPERTY(QString ISO MEMBER m_iso CONSTANT)
public:
    using QObject::QObject;

private:
    const QString m_title = QString::fromLatin1(voro::multimedia::MetaData::Title);
    const QString m_artist = QString::fromLatin1(voro::multimedia::MetaData::Artist);
    const QString m_album = QString::fromLatin1(voro::multimedia::MetaData::Album);
    const QString m_composer = QString::fromLatin1(voro::multimedia::MetaData::Composer);
    const QString m_genre = QString::fromLatin1(voro::multimedia::MetaData::Genre);
    const QString m_year = QString::fromLatin1(voro::multimedia::MetaData::Year);
    const QString m_track = QString::fromLatin1(voro::multimedia::MetaData::Track);
    const QString m_disc = QString::fromLatin1(voro::multimedia::MetaData::Disc);
    const QString m_duration = QString::fromLatin1(voro::multimedia::MetaData::Duration);
    const QString m_description = QString::fromLatin1(voro::multimedia::MetaData::Description);
    const QString m_uri = QString::fromLatin1(voro::multimedia::MetaData::Uri);
    const QString m_artworkUri = QString::fromLatin1(voro::multimedia::MetaData::ArtworkUri);
    const QString m_bitRate = QString::fromLatin1(voro::multimedia::MetaData::BitRate);
    const QString m_sampleRate = QString::fromLatin1(voro::multimedia::MetaData::SampleRate);
    const QString m_width = QString::fromLatin1(voro::multimedia::MetaData::Width);
    const QString m_height = QString::fromLatin1(voro::multimedia::MetaData::Height);
    const QString m_pixelWidth = QString::fromLatin1(voro::multimedia::MetaData::PixelWidth);
    const QString m_pixelHeight = QString::fromLatin1(voro::multimedia::MetaData::PixelHeight);
    const QString m_seekable = QString::fromLatin1(voro::multimedia::MetaData::Seekable);
    const QString m_orientation = QString::fromLatin1(voro::multimedia::MetaData::Orientation);
    const QString m_latitude = QString::fromLatin1(voro::multimedia::MetaData::Latitude);
    const QString m_longitude = QString::fromLatin1(voro::multimedia::MetaData::Longitude);
    const QString m_shutter = QString::fromLatin1(voro::multimedia::MetaData::Shutter);
    const QString m_aperture = QString::fromLatin1(voro::multimedia::MetaData::Aperture);
    const QString m_focalLength = QString::fromLatin1(voro::multimedia::MetaData::FocalLength);
    const QString m_iso = QString::fromLatin1(voro::multimedia::MetaData::ISO);
};

} // namespace voro::qml
