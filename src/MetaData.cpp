#include <multimedia/MetaData.h>

namespace voro::multimedia::MetaData {

const char *Title = "title";
const char *Artist = "artist";
const char *Album = "album";
const char *Composer = "composer";
const char *Genre = "genre";
const char *Year = "year";
const char *Track = "track";
const char *Disc = "disc";
const char *Duration = "duration";
const char *Description = "description";
const char *Uri = "uri";
const char *ArtworkUri = "artwork_uri";
const char *BitRate = "bit_rate";
const char *SampleRate = "sample_rate";
const char *Width = "width";
const char *Height = "height";
const char *PixelWidth = "pixel_width";
const char *PixelHeight = "pixel_height";
const char *Seekable = "seekable";
const char *Orientation = "orientation";
const char *Latitude = "latitute";
const char *Longitude = "longitute";
const char *Shutter = "shutter";
const char *Aperture = "aperture";
const char *FocalLength = "focal_length";
const char *ISO = "iso";

} // namespace voro::multimedia::MetaData
