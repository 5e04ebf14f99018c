// Ends at once: what the system takes to start any program.
int main() {}
