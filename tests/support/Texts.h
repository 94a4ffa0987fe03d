#pragma once

#include <QtCore/QByteArrayList>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

/** Texts of a program that does without Qt, so that a failure shows them. */
inline QByteArrayList toList(const std::vector<std::string> &texts)
{
    QByteArrayList list;
    std::ranges::transform(texts, std::back_inserter(list), QByteArray::fromStdString);
    return list;
}
