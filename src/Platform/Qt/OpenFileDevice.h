#pragma once
#include "Clock.h"
#include "FileSystem.h"
#include "StopToken.h"
#include <QIODevice>
#include <cstddef>
#include <memory>
#include <vector>

namespace quillane {

// An open file as Qt's readers want it. From the moment when stop is requested or the deadline has passed every
// reading fails, and with it whatever reads: so a decoder ends that a file would keep busy for long. One thread.
class OpenFileDevice final : public QIODevice { // NOLINT(misc-multiple-inheritance): it adds no signals
  public:
    // `clock` outlives this. Open from the beginning.
    OpenFileDevice(std::unique_ptr<OpenFile> file, const Clock& clock, Instant deadline, StopToken stop);

    qint64 size() const override { return m_length; }
    // Whether a reading has failed. Some decoders make do with what they had before, and their picture is none.
    bool hasFailed() const { return m_hasFailed; }

  protected:
    qint64 readData(char* data, qint64 most) override;
    qint64 writeData(const char*, qint64) override { return -1; }

  private:
    bool isOver() const;
    bool isBuffered(Bytes offset) const;
    bool fill(Bytes offset);

    std::unique_ptr<OpenFile> m_file;
    const Clock& m_clock;
    Instant m_deadline;
    StopToken m_stop;
    qint64 m_length = 0; // when it was opened
    std::vector<std::byte> m_buffer;
    Bytes m_bufferBegin = 0;
    std::size_t m_bufferLength = 0;
    bool m_hasFailed = false;
};

} // namespace quillane
