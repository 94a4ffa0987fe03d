#pragma once

#include <multimedia/Export.h>

/** Keys of metadata maps. The strings travel between processes. */
namespace voro::multimedia::MetaData {

/** Title of the track; text. */
VOROMULTIMEDIA_EXPORT extern const char *Title;
/** Performing artist; text. */
VOROMULTIMEDIA_EXPORT extern const char *Artist;
/** Album of the track; text. */
VOROMULTIMEDIA_EXPORT extern const char *Album;
/** Composer; text. */
VOROMULTIMEDIA_EXPORT extern const char *Composer;
/** Genre; text. */
VOROMULTIMEDIA_EXPORT extern const char *Genre;
/** Year of release; number. */
VOROMULTIMEDIA_EXPORT extern const char *Year;
/** Number of the track on its disc; number. */
VOROMULTIMEDIA_EXPORT extern const char *Track;
/** Number of the disc; number. */
VOROMULTIMEDIA_EXPORT extern const char *Disc;
/** Duration in milliseconds; 0 when not known. */
VOROMULTIMEDIA_EXPORT extern const char *Duration;
/** Comment; text. */
VOROMULTIMEDIA_EXPORT extern const char *Description;
/** Location of the track; URL or path as text. */
VOROMULTIMEDIA_EXPORT extern const char *Uri;
/** Location of the artwork; URL as text. */
VOROMULTIMEDIA_EXPORT extern const char *ArtworkUri;
/** Bits per second. */
VOROMULTIMEDIA_EXPORT extern const char *BitRate;
/** Samples per second and channel. */
VOROMULTIMEDIA_EXPORT extern const char *SampleRate;
/** Width of the picture in pixels; 0 without one. */
VOROMULTIMEDIA_EXPORT extern const char *Width;
/** Height of the picture in pixels; 0 without one. */
VOROMULTIMEDIA_EXPORT extern const char *Height;
/** Width of one pixel relative to its height. */
VOROMULTIMEDIA_EXPORT extern const char *PixelWidth;
/** Height of one pixel relative to its width. */
VOROMULTIMEDIA_EXPORT extern const char *PixelHeight;
/** Whether seeking in the track is possible; truth value. */
VOROMULTIMEDIA_EXPORT extern const char *Seekable;
/** Orientation of the picture. */
VOROMULTIMEDIA_EXPORT extern const char *Orientation;
/** Latitude of the place of recording. The spelling of the key is required. */
VOROMULTIMEDIA_EXPORT extern const char *Latitude;
/** Longitude of the place of recording. The spelling of the key is required. */
VOROMULTIMEDIA_EXPORT extern const char *Longitude;
/** Shutter speed. */
VOROMULTIMEDIA_EXPORT extern const char *Shutter;
/** Aperture. */
VOROMULTIMEDIA_EXPORT extern const char *Aperture;
/** Focal length. */
VOROMULTIMEDIA_EXPORT extern const char *FocalLength;
/** Film speed. */
VOROMULTIMEDIA_EXPORT extern const char *ISO;

} // namespace voro::multimedia::MetaData
