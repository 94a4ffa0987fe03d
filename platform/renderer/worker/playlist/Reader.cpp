#include "Reader.h"

#include <totem-pl-parser.h>

using voro::renderer::PlaylistListener;

namespace {

void onEntry(TotemPlParser *, const char *uri, GHashTable *details, gpointer data)
{
    const auto *listener = static_cast<PlaylistListener *>(data);
    const auto *title = static_cast<const char *>(g_hash_table_lookup(details, TOTEM_PL_PARSER_FIELD_TITLE));
    listener->entry(uri, title, listener->data);
}

void onRead(GObject *parser, GAsyncResult *result, gpointer data)
{
    auto *listener = static_cast<PlaylistListener *>(data);
    const auto outcome = totem_pl_parser_parse_finish(TOTEM_PL_PARSER(parser), result, nullptr);
    listener->end(outcome == TOTEM_PL_PARSER_RESULT_SUCCESS, listener->data);
    g_object_unref(parser);
    delete listener;
}

} // namespace

extern "C" __attribute__((visibility("default"))) void voroReadPlaylist(const char *uri, const char *base,
                                                                        const PlaylistListener &listener)
{
    TotemPlParser *parser = totem_pl_parser_new();
    g_object_set(parser, "recurse", FALSE, "disable-unsafe", FALSE, nullptr);
    auto *copy = new PlaylistListener(listener);
    g_signal_connect(parser, "entry-parsed", G_CALLBACK(onEntry), copy);
    totem_pl_parser_parse_with_base_async(parser, uri, base, FALSE, nullptr, onRead, copy);
}
