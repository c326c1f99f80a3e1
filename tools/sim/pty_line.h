#pragma once

#include "common/bytes.h"

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
    bool isOpen() const { return master_ >= 0; }
    QString portPath() const { return path_; }

    // 19200 baud with ten bits a byte: one byte every 0.52 ms instead of all at once.
    void setPaced(bool paced) { paced_ = paced; }
    void send(const Bytes& bytes);
    // Hangs up: the tool's port sees the line go away.
    void close();

signals:
    void received(const Bytes& bytes);
    void closed();

private:
    void readAvailable();
    void writePending();
    void writePaced();
    // Writes up to `count` queued bytes; false when the line takes no more for now.
    bool writeSome(std::size_t count);
    void dropUnreadStaleBytes();
    void releaseDescriptors();

    int master_ = -1;
    int slave_ = -1;
    QString path_;
    QSocketNotifier* readNotifier_ = nullptr;
    QSocketNotifier* writeNotifier_ = nullptr;
    QTimer* paceTimer_ = nullptr;
    Bytes pending_;
    bool paced_ = false;
    QElapsedTimer paceClock_;
    std::int64_t pacedBytes_ = 0;
    QElapsedTimer sinceLastWrite_;
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
    QString target_;
    QString link_;
};

} // namespace mq27sim
