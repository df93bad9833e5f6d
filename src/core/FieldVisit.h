#pragma once

#include <exception>

#include "core/cPart.h"
#include "core/cPrgmBits.h"

/// Marks an operation as running on a field for as long as it lives. Fields that name each other may form a
/// circle: an operation that comes back to a field on which it is running already ends there. A part file can
/// also chain fields so that the visits double with each one; past a generous bound the chain ends too. Where an
/// operation fails, on a name that stands for nothing, what it has written is taken back.
class cPrgmBits::Visit {
public:
    enum Operation : unsigned {
        BitRead = 1,
        BitWrite = 2,
        ValueRead = 4,
        ValueWrite = 8,
        Up = 16,
        Down = 32,
        Toggle = 64,
        Limit = 128,
        Width = 256
    };

    Visit(const cPrgmBits& field, Operation operation) : field_(field), operation_(operation) {
        constexpr int kMostVisits = 4096;
        int& visits = field.parent_.FieldVisits();
        allowed_ = (field.busy_ & operation) == 0 && visits < kMostVisits;
        if (allowed_) {
            outermost_ = visits == 0;
            ++visits;
            field.busy_ |= operation;
        }
    }
    Visit(const Visit&) = delete;
    Visit& operator=(const Visit&) = delete;
    ~Visit() {
        if (allowed_) {
            field_.busy_ &= ~static_cast<unsigned>(operation_);
            if (outermost_) {
                field_.parent_.EndFieldVisits(std::uncaught_exceptions() > exceptions_);
            }
        }
    }

    explicit operator bool() const noexcept { return allowed_; }

private:
    const cPrgmBits& field_;
    Operation operation_;
    int exceptions_ = std::uncaught_exceptions();
    bool allowed_ = false;
    bool outermost_ = false;
};
