#include <utility>

#include "ini/PrivateProfile.h"
#include "ini/ProfileChange.h"

struct ProfileTransaction::State {
    State(std::string file, Start start) : change(std::move(file), start), create(start == Start::Empty) {}

    ProfileChange change;
    bool create;
};

ProfileTransaction::ProfileTransaction(std::string file, Start start)
    : state_(std::make_unique<State>(std::move(file), start)) {}

ProfileTransaction::~ProfileTransaction() = default;

void ProfileTransaction::Write(std::string_view section, std::string_view key, std::string_view value) {
    ProfileText& text = state_->change.Text();
    ProfileText::ReadsBack(value) ? text.Write(section, key, value)
                                  : text.Write(section, key, std::string("\"").append(value).append("\""));
}

bool ProfileTransaction::Commit() {
    return state_->change.Commit(state_->create);
}
