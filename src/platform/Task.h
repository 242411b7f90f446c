// The coroutine type of the program's long flows.
#pragma once

#include <coroutine>
#include <exception>
#include <optional>
#include <utility>
#include <variant>

template <typename T>
class Task;

namespace detail {

// What the promises of all tasks share: start at once, and on the end hand over to whoever waits.
struct TaskPromiseBase {
    struct FinalAwaiter {
        bool await_ready() const noexcept { return false; }
        template <typename Promise>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> finished) const noexcept {
            const auto waiting = finished.promise().continuation;
            return waiting ? waiting : std::noop_coroutine();
        }
        void await_resume() const noexcept {}
    };

    std::suspend_never initial_suspend() const noexcept { return {}; }
    FinalAwaiter final_suspend() const noexcept { return {}; }
    void unhandled_exception() noexcept { error = std::current_exception(); }
    void rethrowError() const {
        if (error)
            std::rethrow_exception(error);
    }

    std::coroutine_handle<> continuation;
    std::exception_ptr error;
};

template <typename T>
struct TaskPromise : TaskPromiseBase {
    Task<T> get_return_object() noexcept;
    void return_value(T result) { value.emplace(std::move(result)); }
    T takeResult() {
        rethrowError();
        return std::move(*value);
    }

    std::optional<T> value;
};

template <>
struct TaskPromise<void> : TaskPromiseBase {
    Task<void> get_return_object() noexcept;
    void return_void() const noexcept {}
    void takeResult() const { rethrowError(); }
};

}  // namespace detail

// A flow that runs on the main thread and may wait. It starts at once and runs up to its first wait.
// The task owns the coroutine's frame: destroying it cancels the flow together with everything that the
// flow waits for, and nothing of it runs any more but the destructors of its locals.
//
// Rules: a coroutine takes its parameters by value, or by a reference to something that outlives it; it
// is never a lambda with captures; a task is not destroyed while its own code is on the call stack.
template <typename T = void>
class [[nodiscard]] Task {
public:
    using promise_type = detail::TaskPromise<T>;

    explicit Task(std::coroutine_handle<promise_type> frame) noexcept : m_frame(frame) {}
    Task(Task&& other) noexcept : m_frame(std::exchange(other.m_frame, nullptr)) {}
    Task& operator=(Task&& other) noexcept {
        if (this != &other) {
            cancel();
            m_frame = std::exchange(other.m_frame, nullptr);
        }
        return *this;
    }
    Task(const Task&) = delete;
    Task& operator=(const Task&) = delete;
    ~Task() { cancel(); }

    bool isDone() const noexcept { return !m_frame || m_frame.done(); }

    // Moves the result out of a finished task, or rethrows what escaped from it. Once only.
    T result() { return m_frame.promise().takeResult(); }

    bool await_ready() const noexcept { return m_frame.done(); }
    void await_suspend(std::coroutine_handle<> waiting) noexcept { m_frame.promise().continuation = waiting; }
    T await_resume() { return result(); }

private:
    void cancel() noexcept {
        if (m_frame)
            std::exchange(m_frame, nullptr).destroy();
    }

    std::coroutine_handle<promise_type> m_frame;
};

template <typename T>
Task<T> detail::TaskPromise<T>::get_return_object() noexcept {
    return Task<T>(std::coroutine_handle<TaskPromise<T>>::from_promise(*this));
}

inline Task<void> detail::TaskPromise<void>::get_return_object() noexcept {
    return Task<void>(std::coroutine_handle<TaskPromise<void>>::from_promise(*this));
}
