/* A shared object that nothing but a test loads. */
int plain_symbol(void);

int plain_symbol(void) {
    return 5;
}
