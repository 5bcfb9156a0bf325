// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/streamchunk.h"

#include "link/framecodec.h"
#include "link/replies.h"

namespace {

constexpr int headLength = 4;      // bytes: 01 14 and the length
constexpr int lengthOffset = 2;    // bytes
constexpr int blockHeadLength = 2; // bytes: flag and number of samples

int declaredLength(const QByteArray &rest)
{
    return rest.size() < headLength ? 0 : int(unsignedNumber(rest.mid(lengthOffset, 2)));
}

void readFrame(const QByteArray &frame, const ScopeChannelSettings &channels, StreamChunk *result)
{
    int at = headLength;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        int length = 0;
        if (channels.at(i).on) {
            const int samples = at + 1 < frame.size() ? quint8(frame.at(at + 1)) : 0;
            length = samples * (channels.at(i).wide ? 4 : 2);
            result->samples.at(i) = frame.mid(at + blockHeadLength, length);
        }
        result->counts.append(length);
        at += blockHeadLength + length;
    }
}

} // namespace

StreamChunk cutStreamChunk(const QByteArray &chunk, const ScopeChannelSettings &channels)
{
    StreamChunk result;
    int at = 0;
    do {
        const QByteArray rest = chunk.mid(at);
        const int length = declaredLength(rest);
        if (length == 0 || length > rest.size() || (at > 0 && !isScopeFrame(rest)))
            break;
        readFrame(rest.left(length), channels, &result);
        at += length;
    } while (chunk.size() - at > headLength);
    return result;
}
