/* The reference of the playback benchmark: two plain libVLC players, each decoding its file into
 * memory at a given size (RV32, as the viewer renders), with nothing drawn. Once both have had a
 * second to start, it plays them for the given seconds and prints the CPU seconds used meanwhile.
 *
 *     plain_players SECONDS FILE1 WIDTH1 HEIGHT1 FILE2 WIDTH2 HEIGHT2 */

#include <vlc/vlc.h>

#include <stdio.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <unistd.h>

struct output
{
    unsigned char* pixels;
};

static void* lock_picture(void* opaque, void** planes)
{
    planes[0] = ((struct output*)opaque)->pixels;
    return NULL;
}

static libvlc_media_player_t* start(libvlc_instance_t* vlc, const char* path, unsigned width,
                                    unsigned height, struct output* output)
{
    libvlc_media_t* media = libvlc_media_new_path(vlc, path);
    if (!media)
        return NULL;
    libvlc_media_player_t* player = libvlc_media_player_new_from_media(media);
    libvlc_media_release(media);
    if (!player)
        return NULL;
    output->pixels = aligned_alloc(32, (size_t)width * 4 * ((height + 31) / 32 * 32));
    libvlc_video_set_callbacks(player, lock_picture, NULL, NULL, output);
    libvlc_video_set_format(player, "RV32", width, height, width * 4);
    libvlc_media_player_play(player);
    return player;
}

static double cpu_seconds(void)
{
    struct rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_utime.tv_sec + usage.ru_stime.tv_sec +
           (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

int main(int argc, char** argv)
{
    if (argc != 8) {
        fprintf(stderr, "usage: plain_players SECONDS FILE1 W1 H1 FILE2 W2 H2\n");
        return 2;
    }
    const char* args[] = {"--aout=dummy", "--quiet", "--no-video-title-show"};
    libvlc_instance_t* vlc = libvlc_new(3, args);
    if (!vlc) {
        fprintf(stderr, "plain_players: libVLC could not be started\n");
        return 1;
    }
    struct output outputs[2];
    libvlc_media_player_t* players[2];
    for (int i = 0; i < 2; ++i) {
        players[i] = start(vlc, argv[2 + 3 * i], (unsigned)atoi(argv[3 + 3 * i]),
                           (unsigned)atoi(argv[4 + 3 * i]), &outputs[i]);
        if (!players[i]) {
            fprintf(stderr, "plain_players: cannot play %s\n", argv[2 + 3 * i]);
            return 1;
        }
    }
    sleep(1);
    const double before = cpu_seconds();
    sleep((unsigned)atoi(argv[1]));
    printf("%.3f\n", cpu_seconds() - before);
    fflush(stdout);
    /* Measured; the players are left to the end of the process. */
    _exit(0);
}
