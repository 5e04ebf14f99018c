// The standard streams of a program that Windows starts without a console.
#pragma once

namespace console {

/// Gives standard output, error and input the console of the program that started this one, when there is one and they
/// lead nowhere; redirected ones stay. To be called before anything is written.
void rattache();

}  // namespace console
