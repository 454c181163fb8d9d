// Extension groups and class definitions whose class does not exist yet.
#pragma once

namespace tessarin::native {

// Attaches the groups and defines the classes whose class has come to exist. Cheap when nothing waits.
void attachWaiting();

} // namespace tessarin::native
