#pragma once

#include "common/bytes.h"

#include <cstddef>
#include <cstdint>

#include <QElapsedTimer>
#include <QObject>
#include <QString>

class QSocketNotifier;
class QTimer;

namespace mq27sim {

// The device's end of the serial line: the master side of a pseudo-terminal whose slave
// side the tool opens as its port. The slave side stays open here as well, so that the
// tool may close and reopen the port without the line breaking down.
class PtyLine : public QObject {
    Q_OBJECT

public:
    explicit PtyLine(QObject* parent = nullptr);
    ~PtyLine() override;

    bool open(QString& error);
    bool isOpen() const { return m_master >= 0; }
    QString portPath() const { return m_path; }

    // 19200 baud with ten bits a byte: one byte every 0.52 ms instead of all at once.
    void setPaced(bool paced) { m_paced = paced; }
    // Whether the queue takes `count` more bytes. A real line loses what nobody takes in
    // time; the queue is bounded for a port that nobody reads and for telegrams made
    // faster than the pace lets them out.
    bool hasRoomFor(std::size_t count) const { return m_pending.size() + count <= kMaxQueued; }
    // Queues the bytes, or drops them all when there is no room.
    void send(const Bytes& bytes);
    // Hangs up: the tool's port sees the line go away.
    void close();

signals:
    void received(const Bytes& bytes);
    void closed();

private:
    static constexpr std::size_t kMaxQueued = 65536;

    void readAvailable();
    void writePending();
    void writePaced();
    // Writes up to `count` queued bytes; false when the line takes no more for now.
    bool writeSome(std::size_t count);
    void dropUnreadStaleBytes();
    void releaseDescriptors();

    int m_master = -1;
    int m_slave = -1;
    QString m_path;
    QSocketNotifier* m_readNotifier = nullptr;
    QSocketNotifier* m_writeNotifier = nullptr;
    QTimer* m_paceTimer = nullptr;
    Bytes m_pending;
    bool m_paced = false;
    QElapsedTimer m_paceClock;
    std::int64_t m_pacedBytes = 0;
    QElapsedTimer m_sinceLastWrite;
};

// A symbolic link to the port, removed again when the simulator ends.
class PortLink {
public:
    PortLink() = default;
    PortLink(const PortLink&) = delete;
    PortLink& operator=(const PortLink&) = delete;
    ~PortLink() { remove(); }

    // Replaces a stale link at `linkPath`; refuses to replace anything else.
    bool create(const QString& target, const QString& linkPath, QString& error);
    void remove();

private:
    QString m_target;
    QString m_link;
};

} // namespace mq27sim
