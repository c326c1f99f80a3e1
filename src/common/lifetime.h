#pragma once

// Whether the tool is shutting down. From then on nothing new is started: no hand-over, no
// reopening of a port, no load, no answer to a telegram still on its way.
class Lifetime {
public:
    bool closing() const { return m_closing; }
    void setClosing() { m_closing = true; }

private:
    bool m_closing = false;
};
