#pragma once

#include <voro/strm_dict.h>

#include <QtCore/QString>

#include <memory>

namespace voro::multimedia {

/** A stream dictionary that is destroyed unless it is handed to the renderer. */
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
        // Setting has used up the handle that was passed in.
        static_cast<void>(m_dictionary.release());
        m_dictionary.reset(changed);
        return true;
    }

    /** Gives the dictionary away, to a renderer function that consumes it. */
    strm_dict_t *release() { return m_dictionary.release(); }

private:
    struct Destroy {
        void operator()(strm_dict_t *dictionary) const { strm_dict_destroy(dictionary); }
    };
    std::unique_ptr<strm_dict_t, Destroy> m_dictionary;
};

} // namespace voro::multimedia
