#pragma once

/// Lets the window handle what has queued up while a long operation runs.
class EventPump {
public:
    EventPump() = default;
    EventPump(const EventPump&) = delete;
    EventPump& operator=(const EventPump&) = delete;
    virtual ~EventPump() = default;

    /// Handles all pending events once, then returns; doesn't wait for more.
    virtual void DoEvents() = 0;
};
