#pragma once

#include <QtTest/QtTest>

/**
 * The table of a test: its columns, and what adds a row.
 *
 *     const Rows<QString, int> row("text", "code");
 *     row("nothing", "", 0);
 */
template<typename... Types>
class Rows {
public:
    template<typename... Names>
    explicit Rows(Names... names)
    {
        static_assert(sizeof...(Names) == sizeof...(Types));
        (QTest::addColumn<Types>(names), ...);
    }

    void operator()(const char *title, const Types &...cells) const { (QTest::newRow(title) << ... << cells); }
    /** Rows of one column, each with its value as the title. */
    void each(std::initializer_list<const char *> values) const
    {
        for (const char *value : values) {
            (*this)(value, value);
        }
    }
};
