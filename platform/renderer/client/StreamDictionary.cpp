#include "StreamDictionary.h"

#include <new>

strm_dict_t *strm_dict_new(void)
{
    return new (std::nothrow) strm_dict_t;
}

// The handle stays the same: nobody may use the old one, so nothing shows that it is.
strm_dict_t *strm_dict_set(strm_dict_t *dictionary, const char *key, const char *value)
{
    if (!dictionary || !key || !value) {
        return nullptr;
    }
    try {
        dictionary->parameters.set(key, value);
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
    return dictionary;
}

void strm_dict_destroy(strm_dict_t *dictionary)
{
    delete dictionary;
}
