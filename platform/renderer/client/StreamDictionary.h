#pragma once

#include <voro/strm_dict.h>

#include <renderer/common/Parameters.h>

#include <memory>

struct strm_dict {
    voro::renderer::Parameters parameters;
};

namespace voro::renderer {

struct DictionaryDeleter {
    void operator()(strm_dict_t *dictionary) const { strm_dict_destroy(dictionary); }
};
/** A dictionary that was handed over. */
using OwnedDictionary = std::unique_ptr<strm_dict_t, DictionaryDeleter>;

} // namespace voro::renderer
