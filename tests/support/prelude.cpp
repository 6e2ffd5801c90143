// Exists so that the headers which all tests share are compiled once.
int main()
{
    return 0;
}
