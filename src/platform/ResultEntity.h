#pragma once

#include <QString>

#include <any>
#include <optional>

// The result envelope every operation of the Tasks, Login and CalendarProviders modules returns
// instead of throwing. A failure carries its text in the field of the layer that failed.
struct ResultEntity {
    QString guidId;
    int id = 0;
    bool result = false;
    std::any data;
    QString message;
    std::optional<QString> databaseMessage;
    std::optional<QString> stackTrace;
    std::optional<QString> controllerMessage;
    std::optional<QString> applicationMessage;
    std::optional<QString> domainMessage;
    std::optional<QString> infrastructureMessage;

    static ResultEntity success(std::any data = {});
    static ResultEntity databaseFailure(const QString& text);
    static ResultEntity controllerFailure(const QString& text);
    static ResultEntity applicationFailure(const QString& text);
    static ResultEntity domainFailure(const QString& text);
    static ResultEntity infrastructureFailure(const QString& text);
    // The outcome of a domain rule: success, or failureText as domainMessage.
    static ResultEntity domainCheck(bool passed, const QString& failureText);

    // The payload as T, or nullptr when there is none or it holds another type.
    template <typename T> const T* dataAs() const { return std::any_cast<T>(&data); }

    // The first message field that carries text, in declaration order; what a screen shows.
    std::optional<QString> firstMessage() const;
};
