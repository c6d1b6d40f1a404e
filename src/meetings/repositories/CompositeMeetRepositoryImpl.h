#pragma once

#include "meetings/domain/MeetingsError.h"
#include "meetings/repositories/MeetRepository.h"

#include <memory>
#include <vector>

class CompositeMeetRepositoryError : public MeetingsError {
public:
    enum class Case { noRepositoryAvailable };

    static CompositeMeetRepositoryError noRepositoryAvailable()
    {
        return CompositeMeetRepositoryError(QStringLiteral("No calendar is available for meets"));
    }
    Case kind() const { return Case::noRepositoryAvailable; }

private:
    using MeetingsError::MeetingsError;
};

// Several sources of meets behind one. Reading asks every source, in order, and leaves out any
// that fails, so an unreachable backend never hides the calendar store's meets; writing goes to
// the first source alone, whose result or error passes through untouched.
class CompositeMeetRepositoryImpl final : public MeetRepository {
public:
    explicit CompositeMeetRepositoryImpl(std::vector<std::shared_ptr<MeetRepository>> repositories);

    QList<MeetEntity> fetchMeets() override;
    MeetEntity createMeet(const MeetDraft& draft) override;
    MeetEntity updateMeet(const MeetEntity& meet, const MeetDraft& draft) override;
    void deleteMeet(const MeetEntity& meet) override;

private:
    MeetRepository& first() const;

    std::vector<std::shared_ptr<MeetRepository>> repositories;
};
