/* The reference of the whole-process benchmarks: the least a program can do to read the
 * telemetry of recordings in the camera's layout. For each file named on the command line it
 * reads the stream-list size, the whole index in one read, and then each telemetry chunk (24 or
 * 552 bytes) with one read; nothing is parsed or written but the count of records. */

#include <fcntl.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

enum
{
    MoviListSizeOffset = 14136,
    IndexStartOffset = 14148, /* plus the list size */
    ChunkDataOffset = 14148,  /* plus an entry's offset */
    EntrySize = 16,
};

static uint32_t u32(const unsigned char* p)
{
    return (uint32_t)p[0] | (uint32_t)p[1] << 8 | (uint32_t)p[2] << 16 | (uint32_t)p[3] << 24;
}

static long readFile(const char* path)
{
    int fd = open(path, O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return -1;
    struct stat status;
    unsigned char size[4];
    long records = -1;
    if (fstat(fd, &status) == 0 && pread(fd, size, 4, MoviListSizeOffset) == 4) {
        off_t index = (off_t)IndexStartOffset + u32(size);
        size_t length = status.st_size > index ? (size_t)(status.st_size - index) : 0;
        unsigned char* entries = malloc(length + 1);
        if (entries && pread(fd, entries, length, index) == (ssize_t)length) {
            unsigned char record[552];
            records = 0;
            for (size_t at = 0; at + EntrySize <= length; at += EntrySize) {
                const unsigned char* entry = entries + at;
                if (memcmp(entry, "02sb", 4) != 0)
                    continue;
                size_t want = u32(entry + 12) > 32 ? sizeof record : 24;
                if (pread(fd, record, want, (off_t)ChunkDataOffset + u32(entry + 8)) > 0)
                    ++records;
            }
        }
        free(entries);
    }
    close(fd);
    return records;
}

int main(int argc, char** argv)
{
    long total = 0;
    for (int i = 1; i < argc; ++i) {
        long records = readFile(argv[i]);
        if (records < 0) {
            fprintf(stderr, "minimal_reader: cannot read %s\n", argv[i]);
            return 2;
        }
        total += records;
    }
    printf("%ld\n", total);
    return 0;
}
