#include "meetings/templates/AlarmMessageDomainError.h"

AlarmMessageDomainError AlarmMessageDomainError::missingEventPlaceholder()
{
    //% "The message must include {event} where the event's name goes"
    return {Case::missingEventPlaceholder, qtTrId("meet-alarm-message-error")};
}
