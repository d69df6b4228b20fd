#pragma once

#include <QObject>

#include <concepts>

/// The signal of an observable value. A class of its own, because moc doesn't take templates.
class Notifier : public QObject {
    Q_OBJECT

Q_SIGNALS:
    void changed();
};

/// A value that announces its changes, and only changes: setting an equal value is silent.
template <std::equality_comparable T>
class Observable final : public Notifier {
public:
    Observable() = default;
    explicit Observable(T initial) : m_value(std::move(initial)) { }

    [[nodiscard]] const T &get() const noexcept { return m_value; }
    [[nodiscard]] const T *operator->() const noexcept { return &m_value; }
    [[nodiscard]] const T &operator*() const noexcept { return m_value; }

    void set(T next)
    {
        if (m_value == next)
            return;
        m_value = std::move(next);
        Q_EMIT changed();
    }
    /// Changes the value in place and announces it without comparing.
    template <std::invocable<T &> Change>
    void replace(Change change)
    {
        change(m_value);
        Q_EMIT changed();
    }

private:
    T m_value{};
};
