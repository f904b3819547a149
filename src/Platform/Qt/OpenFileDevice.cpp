#include "OpenFileDevice.h"
#include <algorithm>
#include <cstring>
#include <utility>

namespace quillane {

namespace {
constexpr std::size_t kBuffer = std::size_t{64} << 10U;
}

// Without a buffer of Qt's, so that pos() is where the next reading begins.
OpenFileDevice::OpenFileDevice(std::unique_ptr<OpenFile> file, const Clock& clock, Instant deadline,
                               StopToken stop)
    : m_file(std::move(file))
    , m_clock(clock)
    , m_deadline(deadline)
    , m_stop(std::move(stop))
    , m_buffer(kBuffer) {
    const auto length = m_file->length();
    m_length = length ? *length : 0;
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 OpenFileDevice::readData(char* data, qint64 most) {
    const Bytes offset = pos();
    const bool isInBuffer =
        offset >= m_bufferBegin && offset < m_bufferBegin + static_cast<Bytes>(m_bufferLength);
    if (isOver() || (!isInBuffer && !fill(offset))) {
        return -1;
    }
    const auto begin = static_cast<std::size_t>(offset - m_bufferBegin);
    const auto count = std::min(static_cast<std::size_t>(most), m_bufferLength - begin);
    std::memcpy(data, m_buffer.data() + begin, count);
    return static_cast<qint64>(count);
}

bool OpenFileDevice::isOver() const {
    return m_stop.stopRequested() || m_clock.instant() >= m_deadline;
}

bool OpenFileDevice::fill(Bytes offset) {
    const auto count = m_file->readAt(m_buffer, offset);
    m_bufferBegin = offset;
    m_bufferLength = count ? *count : 0;
    return count.ok();
}

} // namespace quillane
