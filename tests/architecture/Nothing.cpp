// Whatever is wrong shows when this is linked.
int main() {
    return 0;
}
