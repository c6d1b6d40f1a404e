#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>

// The fuzzer's bytes as Qt values. Deep copies: the fuzzer frees its buffer after each run, and a
// value kept beyond it would show as a use-after-free of ours.
inline QByteArray fuzzBytes(const uint8_t* data, size_t size)
{
    return QByteArray(reinterpret_cast<const char*>(data), qsizetype(size));
}

inline QString fuzzText(const uint8_t* data, size_t size)
{
    return QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
}
