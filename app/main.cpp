/// \file
/// The demonstration's entry. It reads no arguments and ends with the status 0, also after a failed
/// start.
#include "app/Application.h"
#include "kernel/Diagnostics.h"

int main()
{
    tamor::enableCallStack();
    tamor::ObjectRef<tamor::Application> application(new tamor::Application);
    application->run();
    application = nullptr;
    tamor::collectUnreferenced();
    tamor::collectAll();
    return 0;
}
