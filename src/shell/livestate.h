#pragma once

#include <QDateTime>
#include <QHash>
#include <QObject>
#include <QString>

#include <utility>

class AllForms;
class DeviceSession;
class Form;
class LedRhythm;
class Texts;

// Whether what the windows show is live. A device that misses three poll answers in a row
// and a read-out shown from a file each get a banner on every page of the main view; while
// the device is silent its values are dimmed and the lamps hold still, and while a file is
// shown nothing offers to send to a device. The poll itself is only watched, never changed.
class LiveState : public QObject {
    Q_OBJECT

public:
    static constexpr int kMissesForSilence = 3;

    LiveState(AllForms& forms, const Texts& texts, const DeviceSession& session, LedRhythm& leds);

    // The poll's answer limit ran out once more.
    void answerMissed();
    // A telegram was taken in, from the line or from a file.
    void telegramTaken(const QDateTime& time, bool fromFile);
    // A read-out from `path` is now on screen.
    void showFile(const QString& path);
    // A port was chosen or a search started: the windows belong to a device on the line again.
    void showLive();

    bool isSilent() const { return m_silent; }
    bool isFileShown() const { return !m_file.isEmpty(); }

    // The windows enable their buttons as their own states go; while a file is shown, those
    // that send are taken back after every such change.
    void applyLocks();
    // The banner in the language now chosen.
    void applyTexts();

Q_SIGNALS:
    void silenceBegan(const QString& serialNo, const QDateTime& since);
    void silenceEnded();

private:
    void showBanner();
    void lock(Form& form, const QString& element, const QString& why);
    void unlockAll();

    AllForms& m_forms;
    const Texts& m_texts;
    const DeviceSession& m_session;
    LedRhythm& m_leds;
    int m_misses = 0;
    bool m_silent = false;
    QDateTime m_lastAnswer;
    QDateTime m_silentSince;
    QString m_file;
    QDateTime m_fileTime;
    // What each locked button was before: enabled state and tool tip.
    QHash<std::pair<Form*, QString>, std::pair<bool, QString>> m_locked;
};
