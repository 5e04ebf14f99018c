// A program that ends at once: what the system itself takes to start one.
int main() {}
