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

// All that was asked for where the file has it: many readers take less for the end.
qint64 OpenFileDevice::readData(char* data, qint64 most) {
    qint64 done = 0;
    while (done < most) {
        const Bytes offset = pos() + done;
        if (isOver() || (!isBuffered(offset) && !fill(offset))) {
            m_hasFailed = true;
            return -1;
        }
        if (!isBuffered(offset)) {
            break; // the end
        }
        const auto begin = static_cast<std::size_t>(offset - m_bufferBegin);
        const auto count = std::min(static_cast<std::size_t>(most - done), m_bufferLength - begin);
        std::memcpy(data + done, m_buffer.data() + begin, count);
        done += static_cast<qint64>(count);
    }
    return done;
}

bool OpenFileDevice::isBuffered(Bytes offset) const {
    return offset >= m_bufferBegin && offset < m_bufferBegin + static_cast<Bytes>(m_bufferLength);
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
