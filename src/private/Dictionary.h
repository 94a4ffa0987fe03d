#pragma once

#include <voro/strm_dict.h>

#include <QtCore/QString>

#include <memory>

namespace voro::multimedia {

/** Owns a stream dictionary until the renderer takes it. */
class Dictionary {
public:
    Dictionary() : m_dictionary(strm_dict_new()) {}

    bool isNull() const { return !m_dictionary; }

    /** Sets an entry; false on failure, which leaves the dictionary as it was. */
    bool set(const QString &key, const QString &value)
    {
        strm_dict_t *changed = strm_dict_set(m_dictionary.get(), key.toUtf8().constData(), value.toUtf8().constData());
        if (!changed) {
            return false;
        }
        // strm_dict_set() has consumed the old handle.
        static_cast<void>(m_dictionary.release());
        m_dictionary.reset(changed);
        return true;
    }

    /** Hands the dictionary to a renderer function, which consumes it. */
    strm_dict_t *release() { return m_dictionary.release(); }

private:
    struct Destroy {
        void operator()(strm_dict_t *dictionary) const { strm_dict_destroy(dictionary); }
    };
    std::unique_ptr<strm_dict_t, Destroy> m_dictionary;
};

} // namespace voro::multimedia
