// SPDX-License-Identifier: MIT
// The thread sanitizer sees what the distribution's Qt does with threads and with the mutexes of the system, but not
// its own locks: for it, what one thread gives to another through Qt is a race. These functions take the place of Qt's
// in every program that the thread sanitizer checks, say what is handed over, and then call Qt's. So the sanitizer
// needs no list of Qt's threads that it must not look at, and finds races in the code that runs on them.

#include <QCoreApplication>
#include <QFutureInterface>
#include <QMetaObject>
#include <QObject>
#include <QThread>
#include <QThreadPool>

#include <atomic>
#include <cstdarg>
#include <functional>
#include <utility>

#include <dlfcn.h>
#include <pthread.h>
#include <sanitizer/tsan_interface.h>
#include <sched.h>

// Since then, Qt is told more of a function that it invokes.
static_assert(QT_VERSION < QT_VERSION_CHECK(6, 7, 0), "The places of Qt's functions are written for Qt 6.4 to 6.6.");

namespace {

// A signal does not know its receivers, so all receivers share this: what is emitted counts as handed over to each
// object that gets an event later.
char handedToAll = 0;

template <typename Function> Function *nextFunction(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

/// A function that one thread gives to another. Either may be the last that needs it.
class HandedOver : public QtPrivate::QSlotObjectBase {
public:
    explicit HandedOver(QSlotObjectBase *function)
        : QSlotObjectBase(&HandedOver::handle)
        , m_function(function)
    {
        __tsan_release(this);
    }

private:
    static void handle(int operation, QSlotObjectBase *base, QObject *receiver, void **arguments, bool *)
    {
        auto *const self = static_cast<HandedOver *>(base);
        __tsan_acquire(self);
        if (operation == Call) {
            self->m_function->call(receiver, arguments);
            __tsan_release(self);
        } else if (operation == Destroy) {
            self->m_function->destroyIfLastRef();
            delete self;
        }
    }

    QSlotObjectBase *m_function;
};

bool takeOver(void **notification)
{
    // Qt gives the receiver, the event and the place of the result.
    __tsan_acquire(notification[0]);
    __tsan_acquire(&handedToAll);
    return false;
}

const bool isInformed = QInternal::registerCallback(QInternal::EventNotifyCallback, takeOver);

} // namespace

// The library calls what a QThread runs as a function that runs once. In the sanitizer's place for it, all that this
// function does would count as done by a library that it must ignore.
extern "C" Q_DECL_EXPORT int __wrap_pthread_once(pthread_once_t *control, void (*function)());

int __wrap_pthread_once(pthread_once_t *control, void (*function)())
{
    enum State { untouched = PTHREAD_ONCE_INIT, running, done };
    const std::atomic_ref<pthread_once_t> state(*control);
    pthread_once_t found = untouched;
    if (state.compare_exchange_strong(found, running)) {
        function();
        __tsan_release(control);
        state = done;
        state.notify_all();
    } else {
        for (; found != done; found = state) {
            state.wait(found);
        }
        __tsan_acquire(control);
    }
    return 0;
}

// Until a program runs that Qt starts, its process shares the memory of this one. The sanitizer takes that memory for a
// copy, and ignores all that happens in it if this process has more threads: from then on, it would ignore the thread
// that has started the program. This function gives the new process a copy.
extern "C" int clone(int (*function)(void *), void *stack, int flags, void *argument, ...) noexcept
{
    static auto *const inSanitizer = nextFunction<int(int (*)(void *), void *, int, void *, ...)>("clone");
    // The flags say which of these the caller has given; the others are read, but not used.
    va_list others;
    va_start(others, argument);
    void *const processPlace = va_arg(others, void *);
    void *const threadMemory = va_arg(others, void *);
    void *const threadPlace = va_arg(others, void *);
    va_end(others);
    return inSanitizer(function, stack, flags & ~CLONE_VM, argument, processPlace, threadMemory, threadPlace);
}

void QMetaObject::activate(QObject *sender, const QMetaObject *metaObject, int signal, void **arguments)
{
    static auto *const inQt =
        nextFunction<void(QObject *, const QMetaObject *, int, void **)>("_ZN11QMetaObject8activateEP7QObjectPKS_iPPv");
    __tsan_release(&handedToAll);
    inQt(sender, metaObject, signal, arguments);
}

bool QMetaObject::invokeMethodImpl(
    QObject *receiver, QtPrivate::QSlotObjectBase *function, Qt::ConnectionType type, void *result)
{
    static auto *const inQt = nextFunction<bool(QObject *, QtPrivate::QSlotObjectBase *, Qt::ConnectionType, void *)>(
        "_ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt14ConnectionTypeEPv");
    return inQt(receiver, new HandedOver(function), type, result);
}

void QCoreApplication::postEvent(QObject *receiver, QEvent *event, int priority)
{
    static auto *const inQt =
        nextFunction<void(QObject *, QEvent *, int)>("_ZN16QCoreApplication9postEventEP7QObjectP6QEventi");
    __tsan_release(receiver);
    inQt(receiver, event, priority);
}

void QObject::deleteLater()
{
    static auto *const inQt = nextFunction<void(QObject *)>("_ZN7QObject11deleteLaterEv");
    __tsan_release(this);
    inQt(this);
}

void QObject::moveToThread(QThread *thread)
{
    static auto *const inQt = nextFunction<void(QObject *, QThread *)>("_ZN7QObject12moveToThreadEP7QThread");
    // Its children move, too.
    __tsan_release(&handedToAll);
    inQt(this, thread);
}

void QThreadPool::start(std::function<void()> work, int priority)
{
    static auto *const inQt =
        nextFunction<void(QThreadPool *, std::function<void()>, int)>("_ZN11QThreadPool5startESt8functionIFvvEEi");
    auto *const handedOver = new std::function<void()>(std::move(work));
    __tsan_release(handedOver);
    inQt(
        this,
        [handedOver] {
            __tsan_acquire(handedOver);
            (*handedOver)();
            delete handedOver;
        },
        priority);
}

// Either thread may be the last that needs the result of a future, and delete it.
bool QFutureInterfaceBase::derefT() const noexcept
{
    static auto *const inQt = nextFunction<bool(const QFutureInterfaceBase *)>("_ZNK20QFutureInterfaceBase6derefTEv");
    __tsan_release(d);
    const bool isNeeded = inQt(this);
    if (!isNeeded) {
        __tsan_acquire(d);
    }
    return isNeeded;
}
