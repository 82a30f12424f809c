// Nothing: that it links is the test.
int main() {
    return 0;
}
